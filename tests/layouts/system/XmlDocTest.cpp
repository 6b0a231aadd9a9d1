#include <filesystem>
#include <gtest/gtest.h>

#include "Handles.h"
#include "LayoutFolder.h"
#include "XmlDoc.h"
#include "support/FileSandbox.h"

namespace {

/// Notes what the default handler walks through.
class CWalker : public CXmlDoc {
  public:
    std::wstring seen;

  private:
    void OnNode(IXMLDOMNode* /*node*/) override { seen += Tag(); }
};

class XmlDoc : public testing::Test {
  protected:
    bool Loads(const std::string& bytes, bool rootOnly = true) {
        return m_document.Load(m_files.Write(L"a#b%20.xml", bytes), rootOnly);
    }
    support::FileSandbox m_files;
    CWalker m_document;
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

TEST_F(XmlDoc, OnlyAFullLoadWalksThroughTheNodes) {
    const std::string text = "<a n='1' m=''>x<![CDATA[y]]><!-- z --><b><c/></b><d/></a>";
    ASSERT_TRUE(Loads(text));
    EXPECT_EQ(m_document.seen, L"");
    EXPECT_TRUE(m_document.TagIs(L"<a>") && !m_document.TagIs(L"<A>"));
    EXPECT_FALSE(m_document.FoundAttribute() || m_document.FindAttribute(L"N"));
    EXPECT_TRUE(m_document.FindAttribute(L"n"));
    EXPECT_EQ(m_document.FoundAttribute(), L"1");
    EXPECT_EQ(m_document.AttributeName(1), L"m");
    EXPECT_EQ(m_document.AttributeValue(1), L"");
    EXPECT_FALSE(m_document.AttributeValue(2) || m_document.AttributeName(-1));
    ASSERT_TRUE(Loads(text, false));
    EXPECT_EQ(m_document.seen, L"<a><#TEXT#><#CDATA#><b><c><d>");
    EXPECT_TRUE(m_document.IsPathEmpty() && m_document.TagIs(L"<a>") && m_document.FindAttribute(L"n"))
        << "the root is current again";
}

TEST_F(XmlDoc, ADocumentIsBuiltNodeByNode) {
    const std::wstring odd = L"<\"&'>\t\n\xD83C\xDFB9";
    EXPECT_TRUE(m_document.NewDocument() && m_document.SetHeader(L"xml", L"encoding", L"UTF-8"));
    EXPECT_FALSE(m_document.SetHeader(L"xml", L"version", L"1.1"));
    EXPECT_EQ(m_document.HeaderValue(L"encoding"), L"UTF-8");
    EXPECT_TRUE(m_document.CreateRootElement(L"a"));
    EXPECT_FALSE(m_document.AddBefore(CXmlDoc::Kind::Text, L"beside the root"));
    for (const wchar_t* text : {L"\x01", L"\xD83C", L"\xDFB9\xD83C", L"\xFFFE"})
        EXPECT_FALSE(m_document.SetAttribute(L"n", text)) << "XML can't hold it";
    EXPECT_TRUE(m_document.SetAttribute(L"n", odd) && m_document.AppendChildElement(L"b"));
    EXPECT_TRUE(m_document.AddBefore(CXmlDoc::Kind::CData, L"c<d"));
    EXPECT_TRUE(m_document.AddAfter(CXmlDoc::Kind::Element, L"e") && m_document.SetTextValue(L"t"));
    EXPECT_EQ(m_document.TextValue(), L"t");
    ASSERT_TRUE(m_document.Save(m_files.Path(L"built.xml")));
    const std::string saved = m_files.Read(L"built.xml");
    EXPECT_TRUE(saved.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>")) << saved;
    EXPECT_EQ(saved.find("<?", 1), std::string::npos) << saved;
    EXPECT_NE(saved.find("><![CDATA[c<d]]><b/><e>t</e></a>"), std::string::npos) << saved;
    EXPECT_TRUE(m_document.Load(m_files.Path(L"built.xml"), true));
    EXPECT_EQ(m_document.AttributeValue(0), odd);
    EXPECT_EQ(m_files.Names(), std::vector<std::wstring>{L"built.xml"}) << "and no scratch file";
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
    const ULONGLONG start = ::GetTickCount64();
    const auto hold = [this](const wchar_t* name) {
        return UniqueFile(
            ::CreateFileW(m_files.Path(name).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    };
    const UniqueFile held[] = {hold(L"good.PGL"), hold(L"broken.pgl")};
    EXPECT_TRUE(ScanLayoutFolder(m_files.Path(L"")).empty());
    EXPECT_LT(::GetTickCount64() - start, 3000U) << "the wait is for all of them";
}

}  // namespace
