// Layout trees as a line of text: "a,F(*b,G[+c]),-".
#pragma once

#include <cwchar>

#include "TreeCtrlWrapper.h"

namespace support {

// Names of plug-ins, a folder's items in "()", or in "[]" when it is closed, "-" for a separator. "*" stands
// before the caret item, "^" when that is not selected, "+" before each other that is.

inline void BuildLayout(CTreeCtrlWrapper& layout, const std::wstring& text) {
    const CTreeCtrlEx& tree = layout.Tree();
    layout.Clear();
    std::vector<std::pair<HTREEITEM, wchar_t>> marks;
    HTREEITEM parent = nullptr;
    std::wstring name;
    for (const wchar_t c : text + L',') {
        if (!std::wcschr(L",()[]", c)) {
            name += c;
            continue;
        }
        const bool opens = c == L'(' || c == L'[';
        if (opens || !name.empty()) {
            const wchar_t mark = name[0];
            if (std::wcschr(L"*^+", mark)) name.erase(0, 1);
            LayoutItem record = opens ? NewFolder(name) : name == L"-" ? NewSeparator() : NewPlugin();
            if (record.kind == LayoutKind::Plugin) record.name = name;
            const HTREEITEM item = layout.Append(parent, record);
            marks.insert(marks.end(), {{item, mark}, {item, c}});
            if (opens) parent = item;
        }
        if (c == L')' || c == L']') parent = tree.Parent(parent);
        name.clear();
    }
    layout.ExpandAll(true);
    for (const auto& [item, mark] : marks) {
        if (mark == L'[') tree.Expand(item, false);
        if (mark == L'*' || mark == L'^') tree.MoveCaret(item);
        if (mark == L'*' || mark == L'+') tree.SetSelected(item, true);
    }
    layout.SetModified(false);
}

/// An item without a record is "?"; one whose label is not its name has the label behind "=".
inline std::wstring LayoutText(const CTreeCtrlWrapper& layout, HTREEITEM parent = nullptr) {
    const CTreeCtrlEx& tree = layout.Tree();
    std::wstring text;
    for (const HTREEITEM item : layout.Children(parent)) {
        if (!text.empty()) text += L',';
        const bool caret = item == tree.Caret();
        if (tree.IsSelected(item) || caret) text += !caret ? L'+' : tree.IsSelected(item) ? L'*' : L'^';
        const LayoutItem record = layout.Find(item) ? *layout.Find(item) : NewFolder(L"?");
        text += record.kind == LayoutKind::Separator ? L"-" : record.name;
        const std::wstring label = tree.ItemText(item);
        if (!record.name.starts_with(label) || label.empty() != record.name.empty()) text += L'=' + label;
        if (record.kind != LayoutKind::Folder && !tree.Child(item)) continue;
        const bool open = !tree.Child(item) || tree.IsExpanded(item);
        text += (open ? L'(' : L'[') + LayoutText(layout, item) + (open ? L')' : L']');
    }
    return text;
}

/// Null when no item has that name.
inline HTREEITEM ItemNamed(const CTreeCtrlWrapper& layout, const std::wstring& name) {
    HTREEITEM item = layout.Tree().Root();
    while (item && (!layout.Find(item) || layout.Find(item)->name != name))
        item = layout.Tree().NextInOrder(item);
    return item;
}

}  // namespace support
