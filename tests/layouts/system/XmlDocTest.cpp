#include <filesystem>
#include <gtest/gtest.h>

#include "LayoutFolder.h"
#include "XmlDoc.h"
#include "support/FileSandbox.h"

namespace {

class XmlDoc : public testing::Test {
  protected:
    bool Loads(const std::string& bytes) {
        return m_document.Load(m_files.Write(L"a#b%20.xml", bytes), true);
    }
    support::FileSandbox m_files;
    CXmlDoc m_document;
};

TEST_F(XmlDoc, WhatIsNoDocumentIsRefused) {
    for (const char* bytes : {"", "MZ\x90\x03", "<a><b></a>", "<a n='\xFF'/>", "<a n='&#1;'/>", "<a/><a/>"}) {
        EXPECT_FALSE(Loads(bytes)) << bytes;
        EXPECT_NE(m_document.LastError().find(L'\n'), std::wstring::npos) << "reason and source text";
    }
    for (const std::wstring& path : {m_files.Path(L"missing.xml"), m_files.Path(L""), std::wstring(L"nul")}) {
        EXPECT_FALSE(m_document.Load(path, true));
        EXPECT_EQ(m_document.LastError(), L"") << "the parser was not asked";
    }
    // A name for the encoding that hides the markup from a look at the bytes.
    EXPECT_FALSE(Loads("<?xml version='1.0' encoding='UTF-7'?>+ADw-!DOCTYPE a+AD4-<a/>"));
    EXPECT_FALSE(Loads("<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;"));
    EXPECT_EQ(m_document.LastError(), L"CXmlDoc: a document type is not allowed") << "before it is parsed";
    EXPECT_FALSE(m_document.HasNode());
}

TEST_F(XmlDoc, AFolderIsScannedForNamedLayouts) {
    const std::string good = "<PluginMenuLayout DocSchema='0' Name='Good'><Anything/></PluginMenuLayout>";
    // A short name may end in ".pgl" for its first one.
    for (const wchar_t* name : {L"good.pgl_old", L"good.PGL", L"other.txt", L"hidden.pgl", L"system.pgl"})
        m_files.Write(name, good);
    m_files.Write(L"unnamed.pgl", "<PluginMenuLayout DocSchema='1' Name=''/>");
    m_files.Write(L"nameless.pgl", "<PluginMenuLayout DocSchema='1'/>");
    m_files.Write(L"root.pgl", "<pluginmenulayout Name='Case'/>");
    m_files.Write(L"broken.pgl", "<PluginMenuLayout Name='Broken'>");
    ::SetFileAttributesW(m_files.Path(L"hidden.pgl").c_str(), FILE_ATTRIBUTE_HIDDEN);
    ::SetFileAttributesW(m_files.Path(L"system.pgl").c_str(), FILE_ATTRIBUTE_SYSTEM);
    ::CreateDirectoryW(m_files.Path(L"folder.pgl").c_str(), nullptr);
    for (const std::wstring& folder : {m_files.Path(L"."), m_files.Path(L"")}) {
        const auto found = ScanLayoutFolder(folder);
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(found[0].name, L"Good");
        EXPECT_TRUE(std::filesystem::exists(found[0].path));
    }
    EXPECT_TRUE(ScanLayoutFolder(L"").empty() && ScanLayoutFolder(m_files.Path(L"no such folder")).empty());
}

}  // namespace
