#include "FindField.h"

#include <utility>

#include "AccessibleName.h"
#include "FoldedText.h"
#include "Resources.h"
#include "WordMatch.h"
#include "resource.h"

namespace {

/// Longer than anything to look for; all of it is compared with each key that is pressed.
constexpr int kMaxCharacters = 250;

}  // namespace

CFindField::CFindField(CDialog& dialog, CPluginListView& list, CLayoutTreeView& tree)
    : m_dialog(dialog), m_list(list), m_tree(tree) {}

void CFindField::OnInitDialog() const {
    Field().Send(EM_SETLIMITTEXT, kMaxCharacters);
    ShowCue();
}

void CFindField::OnDestroy() const { ClearAccessibleName(Field().Handle()); }

void CFindField::ShowCue() const {
    const std::wstring cue = LoadText(m_asksLayout ? IDS_FIND_IN_LAYOUT_CUE : IDS_FIND_CUE);
    Field().Send(EM_SETCUEBANNER, TRUE, cue.c_str());
    SetReaderName(Field().Handle(), cue);
}

bool CFindField::IsInTree() const {
    const HWND focus = ::GetFocus();
    const HWND tree = m_tree.Tree().Handle();
    return focus == tree || ::IsChild(tree, focus);  // a name may be edited
}

void CFindField::OnChange() const {
    if (!m_asksLayout) m_list.Find(Field().Text());
}

/// While another window is active, a dialog that floats keeps the focus for the field; what a host does
/// nobody knows.
void CFindField::OnLeft() {
    const bool floats = (::GetWindowLongPtrW(m_dialog.Handle(), GWL_STYLE) & WS_CHILD) == 0;
    if (!floats || ::IsChild(m_dialog.Handle(), ::GetFocus())) Ask(false);
}

void CFindField::Ask(bool layout) {
    if (layout == m_asksLayout) return;
    m_asksLayout = layout;
    const std::wstring text = Field().Text();
    Field().SetText(std::exchange(m_otherText, text));
    ShowCue();
}

void CFindField::OnFind() {
    m_tree.CancelDrag();  // else Escape would end it and empty the field at once
    if (IsInTree()) Ask(true);
    Field().Focus();  // then: a screen reader tells by the name what is asked for
    Field().Send(EM_SETSEL, 0, -1);
}

std::vector<std::wstring> CFindField::LayoutWords() const {
    return WordsOf(FoldedText(m_asksLayout ? Field().Text() : m_otherText));
}

void CFindField::FindOn(SearchOrder order) {
    if (LayoutWords().empty()) return OnFind();
    SelectNextItem(order);
}

/// False when there is none, which can be heard.
bool CFindField::SelectNextItem(SearchOrder order) const {
    m_tree.CancelDrag();
    if (m_tree.IsEditingLabel()) m_tree.EndLabelEdit(false);
    const auto words = LayoutWords();
    const HTREEITEM item = words.empty() ? nullptr : FindNextItem(m_tree.Layout(), words, order);
    if (!item) {
        ::MessageBeep(MB_OK);
        return false;
    }
    const CTreeCtrlEx& tree = m_tree.Tree();
    tree.EnsureVisible(item);  // first: what a closed folder hides can't be selected
    tree.SelectOnly(item);
    m_tree.UpdateButtons();  // the caret may have been there, which the control tells nobody then
    return true;
}

bool CFindField::OnKey(WPARAM key, bool controlAlone) {
    if (key == 'F' && controlAlone) {
        m_dialog.Send(WM_COMMAND, ID_FIND);
        return true;
    }
    if (key == VK_F3 && (m_asksLayout || IsInTree())) {
        const bool backwards = ::GetKeyState(VK_SHIFT) < 0;
        m_dialog.Send(WM_COMMAND, backwards ? ID_FIND_PREVIOUS : ID_FIND_NEXT);
        return true;
    }
    // The row that tells of other categories names Enter, and what empties the list leaves the focus there.
    if (key == VK_RETURN && m_list.Plugins().HasFocus() && !m_list.HasPlugins()) {
        m_list.GoToFirst();
        return true;
    }
    return Field().HasFocus() && OnFieldKey(key);
}

bool CFindField::OnFieldKey(WPARAM key) {
    switch (key) {
        case VK_RETURN:
            GoOn();
            return true;
        case VK_DOWN:
            GoDown();
            return true;
        case VK_ESCAPE:
            Field().SetText(L"");
            return false;  // it ends other things as well
        default:
            return false;
    }
}

void CFindField::GoOn() {
    if (m_asksLayout) {
        if (SelectNextItem(SearchOrder::Forwards)) m_tree.Tree().Focus();
    } else if (m_list.GoToFirst()) {
        m_list.Plugins().Focus();
    }
}

void CFindField::GoDown() {
    if (m_asksLayout) return m_tree.Tree().Focus();
    if (m_list.SelectedRows().empty()) {
        if (!m_list.HasPlugins()) return;
        m_list.GoToFirst();
    }
    m_list.Plugins().Focus();
}
