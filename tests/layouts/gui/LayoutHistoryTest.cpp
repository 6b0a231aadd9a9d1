// Undo and redo of the steps in which a layout was edited.
#include "layouts/LayoutTreeDialog.h"

namespace {

class LayoutHistory : public support::LayoutTreeDialog {
  protected:
    void SetUp() override {
        Open({m_files.Write(L"one.pgl", "<PluginMenuLayout DocSchema='1' Name='One'/>")});
    }
};

TEST_F(LayoutHistory, AHundredStepsAreKeptAndWhatTheFileHoldsIsKnownInEach) {
    constexpr std::size_t kSteps = 105, kKept = 100, kSaved = 50;
    Build(L"F(a)");
    std::vector<std::wstring> states;
    for (std::size_t at = 0; at <= kSteps; ++at) {
        if (at > 0) Press(IDC_ADD_SEPARATOR);
        if (at == kSaved) m_dialog->Send(WM_COMMAND, ID_SAVE_LAYOUT);
        states.push_back(Unmarked(Shape()));
    }
    const auto expect = [&](std::size_t at) {
        EXPECT_EQ(Unmarked(Shape()), states[at]) << at;
        EXPECT_EQ(Layout().IsModified(), at != kSaved) << at;
        // No step: the state is left with these looks, and comes back with them.
        Press(Tree().IsExpanded(Node(L"F")) ? IDC_COLLAPSE_ALL : IDC_EXPAND_ALL);
        states[at] = Unmarked(Shape());
    };
    std::size_t at = kSteps;
    for (; View().CanUndo(); expect(--at)) Type('Z', VK_CONTROL);
    EXPECT_EQ(at, kSteps - kKept);
    for (; View().CanRedo(); expect(++at)) Type('Y', VK_CONTROL);
    EXPECT_EQ(at, kSteps);
    for (; at >= kSaved; --at) View().OnUndo();
    Press(IDC_ADD_SEPARATOR);
    for (++at; View().CanUndo(); --at, View().OnUndo())
        EXPECT_TRUE(Layout().IsModified()) << "no step leads to the file's state any more";
    EXPECT_EQ(at, kSteps - kKept);
}

TEST_F(LayoutHistory, ManyItemsComeBackInTheirOrder) {
    Build(L"F(e,d)," + Times(600, L"b,a,") + L"G[c]");
    const std::wstring before = Unmarked(Shape());
    Press(IDC_SORT_ALL);
    EXPECT_NE(Unmarked(Shape()), before);
    View().OnUndo();
    EXPECT_EQ(Unmarked(Shape()), before);
}

TEST_F(LayoutHistory, StepsAreNamedAndOnlyAsManyAsFitAreKept) {
    Build(L"*b,a");
    EXPECT_EQ(View().UndoName() + View().RedoName(), L"");
    Press(IDC_SORT_ALL);
    EXPECT_EQ(View().UndoName(), L"&Undo Sort All");
    View().OnUndo();
    EXPECT_EQ(View().UndoName() + View().RedoName(), L"&Redo Sort All");
    Press(IDC_MOVE_DOWN);
    EXPECT_FALSE(View().CanRedo()) << "another step takes its place";
    CLayoutHistory history(Layout());
    for (int name = 0; name < 6; ++name) {
        const CLayoutHistory::CStep step(history, IDS_STEP_RENAME);
        Layout().Change(Tree().Root(), [name](LayoutItem& item) {
            item.name.assign(std::size_t{5} << 20, static_cast<wchar_t>(L'a' + name));
        });
    }
    int steps = 0;
    while (history.Undo()) ++steps;
    EXPECT_EQ(steps, 3) << "of 10 MB each, within 32";
}

}  // namespace
