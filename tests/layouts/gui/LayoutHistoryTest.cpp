// Undo and redo of the steps in which a layout was edited.
#include <random>

#include "layouts/LayoutTreeDialog.h"

namespace {

constexpr std::size_t kMostSteps = 100;

class LayoutHistory : public support::LayoutTreeDialog {
  protected:
    void SetUp() override {
        support::AddVst(1, L"x");
        support::AddVst(2, L"y");
        Open({m_files.Write(L"one.pgl", "<PluginMenuLayout DocSchema='1' Name='One'/>")});
        Choose(support::kVstEffects);
        SelectPlugins({L"x", L"y"});
    }
    std::size_t Below(std::size_t end) { return m_random() % end; }

    /// What the program takes for the tree's order and selection is what the control says.
    void ExpectAsInControl() {
        const CTreeView control(Window());
        std::vector<HTREEITEM> selected;
        const auto walk = [&](const auto& self, HTREEITEM parent, HTREEITEM first) -> void {
            HTREEITEM previous = nullptr;
            for (HTREEITEM item = first; item; item = control.NextSibling(previous = item)) {
                if (Tree().IsSelected(item)) selected.push_back(item);
                EXPECT_EQ(Tree().Parent(item), parent);
                EXPECT_EQ(Tree().PreviousSibling(item), previous);
                EXPECT_EQ(Tree().NextSibling(item), control.NextSibling(item));
                EXPECT_EQ(Tree().Child(item), control.Child(item));
                EXPECT_EQ(Tree().Data(item), control.Data(item));
                self(self, item, control.Child(item));
            }
        };
        walk(walk, nullptr, control.Root());
        EXPECT_EQ(Tree().Root(), control.Root());
        EXPECT_EQ(Tree().SelectedItems(), selected);
    }
    /// What undoing has to bring back.
    std::wstring Seen() {
        ExpectAsInControl();
        return Unmarked(Shape());
    }
    std::string Save() {
        m_dialog->Send(WM_COMMAND, ID_SAVE_LAYOUT);
        m_saved = static_cast<int>(m_at);
        return m_files.Read(L"one.pgl");
    }

    void AnyCommand() {
        constexpr int kCommands[] = {
            IDC_ADD_PLUGIN,    IDC_ADD_SEPARATOR, IDC_NEW_FOLDER,   IDC_SORT_ALL,   IDC_PROMOTE,
            IDC_MOVE_UP,       IDC_COLLAPSE_ALL,  IDC_EXPAND_ALL,   ID_ITEM_DELETE, ID_MOVE_TO_TOP,
            ID_MOVE_TO_BOTTOM, ID_SORT_FOLDERS,   ID_NEW_SUBFOLDER, ID_ITEM_RENAME, ID_CUT,
            ID_COPY,           ID_PASTE,          ID_PASTE};
        Tree().ClearSelection();
        for (HTREEITEM item = Tree().Root(); item; item = Tree().NextVisible(item)) {
            if (Below(5) == 0) Tree().AddToSelection(item);
        }
        View().UpdateButtons();
        const int command = kCommands[Below(std::size(kCommands))];
        if (command >= ID_CUT && command <= ID_PASTE) {
            m_dialog->Send(WM_COMMAND, command);
            return;
        }
        if (!Control(command)) return View().Run(static_cast<UINT>(command), Tree().Caret());
        if (IsEnabled(command)) Press(command);
    }
    void Rename() {
        Tree().LabelEdit().SetText(std::wstring(1, static_cast<wchar_t>(L'a' + Below(26))));
        View().EndLabelEdit(false);
    }

    /// What changes the layout is a step; the looks are those of the state that is left.
    void Do(const std::function<void()>& work) {
        const std::wstring before = Seen();
        const unsigned changes = Layout().Changes();
        work();
        m_states[m_at] = Layout().Changes() == changes ? Seen() : before;
        if (Layout().Changes() == changes) return;
        m_states.resize(++m_at);
        m_states.push_back(Seen());
        if (m_saved >= static_cast<int>(m_at)) m_saved = -1;
        if (m_at <= kMostSteps) return;
        m_states.erase(m_states.begin());
        --m_at;
        --m_saved;
        m_dropped = true;
    }
    bool Travel(bool back) {
        m_states[m_at] = Seen();
        const bool can = back ? m_at > 0 : m_at + 1 < m_states.size();
        EXPECT_EQ(back ? View().CanUndo() : View().CanRedo(), can);
        Type(back ? 'Z' : 'Y', VK_CONTROL);
        if (can) back ? --m_at : ++m_at;
        EXPECT_EQ(Seen(), m_states[m_at]);
        EXPECT_EQ(Layout().IsModified(), static_cast<int>(m_at) != m_saved);
        return can;
    }

    std::mt19937 m_random;
    std::vector<std::wstring> m_states;
    std::size_t m_at = 0;
    bool m_dropped = false;  // a state, because the steps became too many
    int m_saved = 0;         // the state that the file holds; negative when no step leads there any more
};

TEST_F(LayoutHistory, UndoAllGivesTheStartAndRedoAllTheEnd) {
    constexpr unsigned kRounds = 24;  // of 85 commands on average; 120 found nothing more
    for (unsigned round = 0; round < kRounds && !HasFailure(); ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        m_random.seed(round);
        Build(L"a,F(b,-,G(c,d)),H[e],f");
        m_states = {Seen()};
        m_at = 0;
        m_dropped = false;
        const std::string start = Save();
        // Every fourth round is longer than what can be undone.
        for (int command = round % 4 == 0 ? 160 : 60; command > 0 && !HasFailure(); --command) {
            switch (Below(12)) {
                case 0:
                    Travel(true);
                    break;
                case 1:
                    Travel(false);
                    break;
                case 2:
                    Save();
                    break;
                default:
                    Do([this] { AnyCommand(); });
                    if (View().IsEditingLabel()) Do([this] { Rename(); });
            }
        }
        const std::size_t endAt = m_at;
        const std::string end = Save();
        while (Travel(true)) continue;
        EXPECT_TRUE(m_dropped || Save() == start);
        while (m_at < endAt) Travel(false);
        EXPECT_EQ(Save(), end);
    }
}

TEST_F(LayoutHistory, ManyItemsComeBackInTheirOrder) {
    Build(L"F(e,d)," + Times(600, L"b,a,") + L"G[c]");
    const std::wstring before = Seen();
    Press(IDC_SORT_ALL);
    EXPECT_NE(Seen(), before);
    View().OnUndo();
    EXPECT_EQ(Seen(), before);
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
