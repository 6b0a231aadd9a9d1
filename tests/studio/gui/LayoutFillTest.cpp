// The commands that fill the layout of the main dialog.
#include "layouts/LayoutTreeDialog.h"

namespace {

using namespace support;

class LayoutFill : public LayoutTreeDialog {
  protected:
    void SetUp() override {
        AddVst(1, L"b");
        AddVst(2, L"a");
        AddVst(3, L"c", true).Text(L"Vendor", L" tarnwick");
        AddVst(4, L"d").Text(L"Vendor", L"");
        AddVst(5, L"not");
        CreateKey(HKEY_CURRENT_USER, kExcludedPlugins + IdText(5));
        AddSurface(7, L"not");
        AddFilter(8, L"Plate", kSomeFile);
        Open();
    }
    std::wstring After(UINT command) {
        m_dialog->Send(WM_COMMAND, command);
        return Shape();
    }
};

TEST_F(LayoutFill, MakesSortedFoldersAtTheEndInOneStep) {
    EXPECT_EQ(After(ID_FILL_BY_VENDOR),
              L"*DirectX Audio Effects (DX)[Plate],Tarnwick[a,b,c],VST Audio Effects (VST)[d]");
    EXPECT_EQ(Layout().Find(Node(L"c"))->vendor, L" tarnwick");
    EXPECT_TRUE(Layout().IsModified());
    m_popups.Expect(L"in it already", IDOK);
    After(ID_FILL_BY_CATEGORY);
    EXPECT_EQ(After(ID_UNDO), L"");
    EXPECT_EQ(View().RedoName(), L"&Redo Fill Layout");
    EXPECT_EQ(
        After(ID_FILL_BY_CATEGORY),
        L"*DirectX Audio Effects (DX)[Plate],VST Audio Effects (VST)[a,b,d],VST3 Audio Effects (VST3)[c]");
    Layout().SetModified(false);
}

TEST_F(LayoutFill, FillsTheFoldersThatAreThere) {
    Build(L"V3[TARNWICK()],z,V2[*y,-,x],DX[M(),R]");
    for (const auto& [name, caption] : Table<Line, Line>{{L"V3", L"VST3 audio effects (VST3)"},
                                                         {L"V2", L" Vst Audio Effects (Vst)"},
                                                         {L"DX", L"DirectX Audio Effects (DX)"}})
        Layout().Change(Node(name), [&, to = caption](LayoutItem& folder) { folder.name = to; });
    EXPECT_EQ(After(ID_FILL_BY_BOTH),
              L"VST3 audio effects (VST3)(TARNWICK(+c)),z, Vst Audio Effects (Vst)(y,-,x,+Tarnwick[a,b],+d),"
              L"DirectX Audio Effects (DX)(M(),*Plate,R)");
    Build(L"z");
    Press(IDC_NEW_FOLDER);  // its name is being edited
    EnterText(Tree().LabelEdit().Handle(), L"TARNWICK");
    EXPECT_EQ(After(ID_FILL_BY_VENDOR),
              L"z,TARNWICK[a,b,c],*DirectX Audio Effects (DX)[Plate],VST Audio Effects (VST)[d]");
    Layout().SetModified(false);
}

}  // namespace
