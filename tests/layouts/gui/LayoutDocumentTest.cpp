// Layout files read into and written from a real tree.
#include <windows.h>

#include <gtest/gtest.h>

#include "ClsidText.h"
#include "Dialog.h"
#include "SaveFailure.h"
#include "XmlTreeCtrl.h"
#include "resource.h"
#include "support/FileSandbox.h"

namespace {

constexpr Guid kKnown = "{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}"_guid;
constexpr Guid kKnownMd5 = "{66666666-7777-8888-9999-AAAAAAAAAAAA}"_guid;
constexpr char kUnknownText[] = "{11111111-2222-3333-4444-555555555555}";

std::string Layout(const std::string& content,
                   const std::string& attributes = "DocSchema='1' Name='Mixing'") {
    return "<PluginMenuLayout " + attributes + ">" + content + "</PluginMenuLayout>";
}

std::string Plugin(int category, const std::string& attributes = "") {
    return "<Plugin CLSID='" + std::string(kUnknownText) + "' Category='" + std::to_string(category) +
           "' Name='P' " + attributes + "/>";
}

class CHiddenDialog : public CDialog {
  public:
    CHiddenDialog() : CDialog(IDD_PLUGIN_MANAGER) {}
};

struct TestTree {
    TestTree() {
        dialog.CreateModeless(nullptr);
        tree.Attach(dialog.Item(IDC_LAYOUT_TREE).Handle(), {});
    }
    CHiddenDialog dialog;
    CTreeCtrlEx tree;
    CTreeCtrlWrapper layout{tree};
};

class LayoutDocument : public testing::Test {
  protected:
    void SetUp() override {
        m_vst.clsid = kKnown;
        m_vst.md5Clsid = kKnownMd5;
    }
    bool Load(const std::string& bytes) {
        m_document.SetLayoutName(L"");
        return m_document.Load(m_files.Write(L"in.pgl", bytes), false);
    }
    /// Loads and saves again; what was written behind the first line.
    std::string Again(const std::string& content) {
        EXPECT_TRUE(Load(Layout(content))) << content;
        EXPECT_TRUE(m_document.Save(m_files.Path(L"out.pgl")));
        std::string saved = m_files.Read(L"out.pgl");
        const std::string head = "<PluginMenuLayout DocSchema=\"1\" Name=\"Mixing\"";
        const std::size_t begin = saved.find(head);
        EXPECT_NE(begin, std::string::npos) << saved;
        return begin == std::string::npos ? saved : saved.substr(begin + head.size());
    }
    /// The tree as one line: "Folder(child,child),item".
    std::wstring Shown(HTREEITEM parent = nullptr) const {
        std::wstring text;
        for (const HTREEITEM item : m_tree.layout.Children(parent)) {
            const LayoutItem* record = m_tree.layout.Find(item);
            if (!text.empty()) text += L',';
            text += record->kind == LayoutKind::Separator ? L"-" : record->name;
            if (record->kind == LayoutKind::Folder) text.append(L"(").append(Shown(item)).append(L")");
        }
        return text;
    }
    const LayoutItem& First() const { return *m_tree.layout.Find(m_tree.tree.Root()); }

    support::FileSandbox m_files;
    TestTree m_tree;
    VstInventoryRecord m_vst;
    LayoutPlugins m_plugins{
        [this](const Guid& id) { return id == kKnown || id == kKnownMd5 ? &m_vst : nullptr; },
        [](LayoutItem& item) { item.installed = item.inventoryFlag = item.clsid == kKnownMd5; }};
    CXMLTreeCtrl m_document{m_tree.layout, m_plugins};
};

TEST_F(LayoutDocument, ALayoutIsReadInMenuOrder) {
    ASSERT_TRUE(Load("<?xml version='1.0'?>\n<!-- c -->" +
                     Layout("\n <Folder Name='Reverbs'>\n  <Folder/><!-- c -->" +
                            Plugin(0, "OriginalName='Studio Reverb' DefaultPreset='Big'") +
                            "</Folder>text<Separator><x>y</x></Separator><Comment a='b'> </Comment>" +
                            "<PluginMenuLayout/>" + Plugin(-7) + "<Folder Name=''/>")));
    EXPECT_EQ(Shown(), L"Reverbs(\?\?\?\?\?\?(),P),-,P,()");
    EXPECT_EQ(m_document.LayoutName(), L"Mixing");
    EXPECT_EQ(::GetFocus(), m_tree.tree.Handle());
    const auto items = m_tree.layout.Children(nullptr);
    EXPECT_TRUE(m_tree.tree.IsExpanded(items.front())) << "it holds a folder, and each was selected in turn";
    EXPECT_TRUE(m_tree.tree.Caret() == items.back() && m_tree.tree.FirstVisible() == items.front());
    const LayoutItem& plugin = *m_tree.layout.Find(m_tree.layout.Children(m_tree.tree.Root()).back());
    EXPECT_EQ(ClsidText(plugin.clsid), L"{11111111-2222-3333-4444-555555555555}");
    EXPECT_EQ(plugin.originalName, L"Studio Reverb");
    EXPECT_EQ(plugin.defaultPreset, L"Big");
    EXPECT_FALSE(plugin.installed || plugin.vendor);
}

TEST_F(LayoutDocument, AFileThatIsNoLayoutLeavesTheTreeAlone) {
    ASSERT_TRUE(Load(Layout("<Folder Name='Old'/>")));
    m_tree.layout.SetModified(false);
    const std::string id = "CLSID='" + std::string(kUnknownText) + "' ";
    std::vector<std::string> files = {Layout("", "Name='n'"),
                                      Layout("", "DocSchema='0'"),
                                      Layout("", "DocSchema='-1'"),
                                      Layout("", "DocSchema='one'"),
                                      Layout("", "docschema='1'"),
                                      "<pluginMenuLayout DocSchema='1'/>",
                                      "<Folder><PluginMenuLayout/></Folder>",
                                      "<PluginMenuLayout DocSchema='1'>",
                                      ""};
    for (const std::string& lacking :
         {"<Plugin " + id + "Name='P'/>", "<Plugin " + id + "Category='1'/>",
          std::string("<Plugin Category='1' Name='P'/>"), "<Plugin CLSID='' Category='1' Name='P'/>" + id,
          "<Plugin CLSIDMD5='' " + id + "Category='1' Name='P'/>", std::string("<Comment>text</Comment>"),
          std::string("<Folder><Comment><Separator/></Comment></Folder>"),
          std::string("<Comment><PluginMenuLayout DocSchema='1'/></Comment>"),
          std::string("<Comment><!-- c --></Comment>"), std::string("<plugin>x</plugin>")})
        files.push_back(Layout("<Separator/>" + lacking + "<Separator/>"));
    for (const std::string& bytes : files) {
        EXPECT_FALSE(Load(bytes)) << bytes;
        EXPECT_EQ(Shown(), L"Old()") << bytes;
        EXPECT_FALSE(m_tree.layout.IsModified()) << bytes;
    }
    EXPECT_TRUE(Load(Layout("", "DocSchema=' 2nd'"))) << "what follows a number is ignored";
    EXPECT_EQ(Shown(), L"");
}

TEST_F(LayoutDocument, TheMd5IdGoesBeforeTheOtherAndATextThatIsNoneIsTheNullId) {
    ASSERT_TRUE(Load(Layout("<Plugin CLSID='" + std::string(kUnknownText) +
                            "' CLSIDMD5='{66666666-7777-8888-9999-AAAAAAAAAAAA}' Category='1' Name='P'/>")));
    EXPECT_EQ(First().clsid, kKnownMd5);
    EXPECT_TRUE(First().installed && First().inventoryFlag);
    for (const char* text : {"none", "CLSID", "{1111}", "Msxml2.DOMDocument.6.0"}) {
        ASSERT_TRUE(Load(Layout("<Plugin CLSID='" + std::string(text) + "' Category='1' Name='P'/>")));
        EXPECT_TRUE(First().clsid.IsNull()) << text;
    }
}

TEST_F(LayoutDocument, APluginIsWrittenWithTheIdsOfItsCategory) {
    const std::string id = kUnknownText;
    const auto row = [](const std::string& ids, int category) {
        return "><Plugin " + ids + " Category=\"" + std::to_string(category) +
               "\" Name=\"P\" OriginalName=\"\"/></PluginMenuLayout>";
    };
    for (const int category : {0, 1, 2, 4, 7, 8, 9, 10, 99})
        EXPECT_EQ(Again(Plugin(category)).find(row("CLSID=\"" + id + "\"", category)),
                  category == 1 ? std::string::npos : 0U)
            << category;
    EXPECT_TRUE(Again(Plugin(3)).starts_with(row("CLSID=\"" + id + "\" CLSIDMD5=\"" + id + "\"", 3)));
    const std::string known = "CLSIDMD5='{66666666-7777-8888-9999-AAAAAAAAAAAA}' ";
    const std::string both = "CLSID=\"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}\"";
    const std::string md5 = " CLSIDMD5=\"{66666666-7777-8888-9999-AAAAAAAAAAAA}\"";
    EXPECT_TRUE(Again(Plugin(1, known)).starts_with(row(both + md5, 1)));
    EXPECT_TRUE(Again(Plugin(9, known)).starts_with(row(both, 9)));
    m_vst.md5Clsid = {};
    EXPECT_TRUE(Again(Plugin(1, known)).starts_with(row(both, 1)));
    EXPECT_TRUE(Again(Plugin(3, known))
                    .starts_with(row(both + " CLSIDMD5=\"{00000000-0000-0000-0000-000000000000}\"", 3)));
}

TEST_F(LayoutDocument, ALayoutSurvivesTheRoundTrip) {
    const std::string content =
        "><Folder Name=\"&lt;A &amp; &quot;B&quot;&gt; \xF0\x9F\x8E\xB9\"><Folder Name=\"\"/></Folder>"
        "<Separator/><Plugin CLSID=\"" +
        std::string(kUnknownText) + "\" Category=\"0\" Name=\"" + std::string(10000, 'n') +
        "\" OriginalName=\"o\" DefaultPreset=\"Vocal\"/></PluginMenuLayout>";
    EXPECT_TRUE(Again(content.substr(1, content.rfind('<') - 1)).starts_with(content));
    EXPECT_EQ(Shown().size(), 10000 + std::size(L"<A & \"B\"> \xD83C\xDFB9(()),-,") - 1);
}

TEST_F(LayoutDocument, ALayoutWithoutANameIsNamedAfterItsFirstItem) {
    EXPECT_FALSE(m_document.Save(m_files.Path(L"out.pgl"))) << "neither name nor item";
    ASSERT_TRUE(Load(Layout("<Folder Name='Synths'/><Separator/>", "DocSchema='1'")));
    ASSERT_TRUE(m_document.Save(m_files.Path(L"out.pgl")));
    EXPECT_NE(m_files.Read(L"out.pgl").find("DocSchema=\"1\" Name=\"Synths\"><Folder Name=\"Synths\"/>"),
              std::string::npos);
}

TEST_F(LayoutDocument, ANameThatXmlCantHoldFailsTheSaveAndIsPointedAt) {
    ASSERT_TRUE(Load(Layout("<Separator/><Folder Name='A'><Folder Name='B'/></Folder>")));
    m_files.Write(L"out.pgl", "old");
    const HTREEITEM outer = m_tree.tree.NextSibling(m_tree.tree.Root());
    const HTREEITEM inner = m_tree.tree.Child(outer);
    m_tree.layout.Change(inner, [](LayoutItem& item) { item.name = L"B\x01"; });
    EXPECT_FALSE(m_document.Save(m_files.Path(L"out.pgl")));
    EXPECT_EQ(m_document.FailedItem(), inner);
    EXPECT_EQ(SaveFailureText(m_document), L"\"B\x01\" contains a character that a layout file can't hold.");
    m_document.SetLayoutName(L"\xDFB9");
    EXPECT_FALSE(m_document.Save(m_files.Path(L"out.pgl")));
    EXPECT_TRUE(SaveFailureText(m_document).starts_with(L"\"\xDFB9\" contains") && !m_document.FailedItem());
    EXPECT_EQ(m_files.Read(L"out.pgl"), "old");
}

TEST_F(LayoutDocument, NestingHasALimitThatReadingAndWritingShare) {
    const auto nested = [](int depth) {
        std::string text;
        for (int i = 0; i < depth; ++i) text += "<Folder Name=\"f\">";
        text += "<Separator/>";
        for (int i = 0; i < depth; ++i) text += "</Folder>";
        return text;
    };
    EXPECT_EQ(Again(nested(200)).find(nested(200)), 1U);
    ASSERT_TRUE(Load(Layout(nested(250))));
    HTREEITEM deepest = m_tree.tree.Root();
    while (const HTREEITEM child = m_tree.tree.Child(deepest)) deepest = child;
    EXPECT_TRUE(m_document.Save(m_files.Path(L"out.pgl")));
    ASSERT_TRUE(m_tree.layout.Append(m_tree.tree.Parent(deepest), NewFolder(L"beside")));
    EXPECT_FALSE(m_document.Save(m_files.Path(L"out.pgl"))) << "it could not be read again";
    EXPECT_EQ(SaveFailureText(m_document),
              L"The folder \"beside\" is nested too deeply: a layout can have 250 levels at most.");
    for (const int depth : {251, 254, 300, 20000}) EXPECT_FALSE(Load(Layout(nested(depth)))) << depth;
}

}  // namespace
