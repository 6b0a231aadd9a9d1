// The field Find, and the keys that lead to it and on from it.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "Dialog.h"
#include "LayoutSearch.h"
#include "LayoutTreeView.h"
#include "PluginListView.h"

/// What is typed narrows the plug-in list at once. Called from the layout tree, the field asks for items of
/// the layout, in words of their own, until another control of the dialog has the focus.
class CFindField {
  public:
    CFindField(CDialog& dialog, CPluginListView& list, CLayoutTreeView& tree);

    void OnInitDialog() const;
    void OnDestroy() const;

    void OnChange() const;
    void OnLeft();
    /// Goes to the field.
    void OnFind();
    /// Goes to the next item of the layout.
    void OnFindNext() { FindOn(SearchOrder::Forwards); }
    void OnFindPrevious() { FindOn(SearchOrder::Backwards); }
    /// A key that is pressed anywhere in the dialog; true when that was all it is for.
    bool OnKey(WPARAM key, bool controlAlone);

  private:
    CWindow Field() const { return m_dialog.Item(IDC_FIND); }
    bool IsInTree() const;
    void Ask(bool layout);
    void ShowCue() const;
    void FindOn(SearchOrder order);
    bool SelectNextItem(SearchOrder order) const;
    /// Folded.
    std::vector<std::wstring> LayoutWords() const;
    bool OnFieldKey(WPARAM key);
    void GoOn();
    void GoDown();

    CDialog& m_dialog;
    CPluginListView& m_list;
    CLayoutTreeView& m_tree;
    bool m_asksLayout = false;
    std::wstring m_otherText;  // the layout's while the field asks the list, else the list's
};
