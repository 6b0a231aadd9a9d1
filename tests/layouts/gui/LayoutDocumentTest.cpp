// Layout files read into a tree, and written from it.
#include "SaveFailure.h"
#include "XmlTreeCtrl.h"
#include "layouts/LayoutTreeDialog.h"

namespace {

constexpr Guid kKnown{1, 1, 2, {}};
constexpr Guid kKnownMd5{2, 1, 2, {}};

std::string Id(unsigned number) { return support::Utf8(support::IdText(number)); }
std::string File(const std::string& content,
                 const std::string& attributes = "DocSchema=\"1\" Name=\"Mixing\"") {
    return "<PluginMenuLayout " + attributes + ">" + content + "</PluginMenuLayout>";
}
std::string Plugin(const std::string& clsid, int category) {
    return "<Plugin CLSID='" + clsid + "' Category='" + std::to_string(category) + "' Name='P'/>";
}

class LayoutDocument : public support::LayoutTreeDialog {
  protected:
    void SetUp() override {
        Open();
        m_vst.clsid = kKnown;
        m_vst.md5Clsid = kKnownMd5;
        m_document.emplace(Layout(), m_plugins);
    }
    static std::string Nested(int depth, const std::string& innermost) {
        return Times(depth, "<Folder Name=\"f\">") + innermost + Times(depth, "</Folder>");
    }
    bool Load(const std::string& bytes) { return m_document->Load(m_files.Write(L"in.pgl", bytes), false); }
    bool Save() { return m_document->Save(m_files.Path(L"out.pgl")); }
    /// When it is loaded and saved again.
    void ExpectSaved(const std::string& content, const std::string& saved) {
        EXPECT_TRUE(Load(File(content)) && Save()) << content;
        EXPECT_NE(m_files.Read(L"out.pgl").find(File(saved)), std::string::npos)
            << m_files.Read(L"out.pgl") << "\n"
            << saved;
    }
    const LayoutItem& First() { return *Layout().Find(Tree().Root()); }

    VstInventoryRecord m_vst;
    LayoutPlugins m_plugins{
        [this](const Guid& id) { return id == kKnown || id == kKnownMd5 ? &m_vst : nullptr; },
        [](LayoutItem& item) { item.installed = item.inventoryFlag = item.clsid == kKnownMd5; }};
    std::optional<CXMLTreeCtrl> m_document;
};

TEST_F(LayoutDocument, AFileIsReadInMenuOrderOrLeavesTheTreeAlone) {
    std::vector<std::string> refused = {"", "<pluginMenuLayout DocSchema='1'/>",
                                        "<Folder><PluginMenuLayout/></Folder>",
                                        "<PluginMenuLayout DocSchema='1'>"};
    for (const char* root :
         {"Name='n'", "DocSchema='0'", "DocSchema='-1'", "DocSchema='one'", "docschema='1'"})
        refused.push_back(File("", root));
    for (const char* item : {"<Plugin CLSID='{1}' Name='P'/>", "<Plugin CLSID='{1}' Category='1'/>",
                             "<Plugin Category='1' Name='P'/>", "<Plugin CLSID='' Category='1' Name='P'/>",
                             "<Plugin CLSIDMD5='' CLSID='{1}' Category='1' Name='P'/>", "<plugin>x</plugin>",
                             "<Comment>text</Comment>", "<Folder><Comment><Separator/></Comment></Folder>"})
        refused.push_back(File("<Separator/>" + std::string(item) + "<Separator/>"));
    for (const int depth : {251, 254, 300, 20000}) refused.push_back(File(Nested(depth, "")));
    Build(L"*Old()");
    for (const std::string& file : refused) {
        EXPECT_FALSE(Load(file)) << file;
        EXPECT_EQ(Shape(), L"*Old()") << file;
        EXPECT_FALSE(Layout().IsModified()) << file;
    }
    const std::string plugin = Plugin(Id(3), -7);
    EXPECT_TRUE(Load("<?xml version='1.0'?>\n<!-- c -->" +
                     File("\n <Folder Name='A'>\n  <Folder/><!-- c -->" + plugin +
                          "</Folder>text<Separator><x>y</x></Separator><Comment a='b'> </Comment>" +
                          "<PluginMenuLayout/>" + plugin + "<Folder Name=''/>")));
    EXPECT_EQ(Shape(), L"A(\?\?\?\?\?\?(),P),-,P,*()");
    EXPECT_EQ(m_document->LayoutName(), L"Mixing");
    EXPECT_TRUE(Tree().HasFocus());
    EXPECT_TRUE(Load(File(Times(60, "<Separator/>"), "DocSchema=' 2nd'")))
        << "what follows a number is ignored";
    EXPECT_TRUE(Tree().Count() == 60 && Tree().FirstVisible() == Tree().Root());
}

TEST_F(LayoutDocument, TheMd5IdGoesBeforeTheOtherAndATextThatIsNoneIsTheNullId) {
    const std::string known = "CLSID='" + Id(1) + "'";
    const std::pair<std::string, Guid> cases[] = {
        {known, kKnown},        {known + " CLSIDMD5='" + Id(2) + "'", kKnownMd5},
        {"CLSID='none'", {}},   {"CLSID='CLSID'", {}},
        {"CLSID='{1111}'", {}}, {"CLSID='Msxml2.DOMDocument.6.0'", {}}};
    for (const auto& [ids, clsid] : cases) {
        EXPECT_TRUE(Load(File("<Plugin " + ids + " Category='1' Name='P'/>"))) << ids;
        EXPECT_EQ(First().clsid, clsid) << ids;
        EXPECT_EQ(First().installed, clsid == kKnownMd5) << ids;
        EXPECT_FALSE(First().vendor);
    }
}

TEST_F(LayoutDocument, APluginIsWrittenWithTheIdsOfItsCategory) {
    const auto written = [](int category, const std::string& clsid, const std::string& md5) {
        return "<Plugin CLSID=\"" + clsid + (md5.empty() ? "" : "\" CLSIDMD5=\"" + md5) + "\" Category=\"" +
               std::to_string(category) + "\" Name=\"P\" OriginalName=\"\"/>";
    };
    for (const int category : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 99}) {
        const bool both = category == 1 || category == 3;
        ExpectSaved(Plugin(Id(3), category), written(category, Id(3), both ? Id(3) : ""));
        ExpectSaved(Plugin(Id(2), category), written(category, Id(1), both ? Id(2) : ""));
    }
    m_vst.md5Clsid = {};
    ExpectSaved(Plugin(Id(2), 1), written(1, Id(1), ""));
    ExpectSaved(Plugin(Id(2), 3), written(3, Id(1), support::Utf8(ClsidText({}))));
}

TEST_F(LayoutDocument, ALayoutSurvivesTheRoundTrip) {
    const std::string content =
        "<Folder Name=\"&lt;A &amp; &quot;B&quot;&gt; \xF0\x9F\x8E\xB9\"><Folder Name=\"\"/></Folder>"
        "<Separator/><Plugin CLSID=\"" +
        Id(3) + "\" Category=\"0\" Name=\"" + std::string(10000, 'n') +
        "\" OriginalName=\"o\" DefaultPreset=\"Vocal\"/>" + Nested(249, "<Separator/>");
    ExpectSaved(content, content);
    EXPECT_TRUE(Shape().starts_with(L"<A & \"B\"> \xD83C\xDFB9(()),-," + std::wstring(10000, L'n') + L","));
    m_document->SetLayoutName(L"");
    EXPECT_TRUE(Save());
    EXPECT_NE(m_files.Read(L"out.pgl").find("Name=\"&lt;A &amp;"), std::string::npos)
        << "after its first item";
    Build(L"");
    m_document->SetLayoutName(L"");
    EXPECT_FALSE(Save());
}

TEST_F(LayoutDocument, ASaveThatFailsSaysWhereAndLeavesTheOldFile) {
    const auto fails = [this](const std::wstring& item) {
        m_files.Write(L"out.pgl", "old");
        EXPECT_FALSE(Save());
        EXPECT_EQ(m_document->FailedItem(), Node(item));
        EXPECT_EQ(m_files.Read(L"out.pgl"), "old");
        return SaveFailureText(*m_document);
    };
    Build(L"-,A(B\x01())");
    EXPECT_EQ(fails(L"B\x01"), L"\"B\x01\" contains a character that a layout file can't hold.");
    m_document->SetLayoutName(L"\xDFB9");
    EXPECT_EQ(fails(L""), L"\"\xDFB9\" contains a character that a layout file can't hold.");
    EXPECT_TRUE(Load(File(Nested(249, "<Folder Name='deepest'/>"))) && Save());
    Layout().Append(Node(L"deepest"), NewFolder(L"below"));
    EXPECT_EQ(fails(L"below"),
              L"The folder \"below\" is nested too deeply: a layout can have 250 levels at most.");
}

}  // namespace
