// Layout trees as a line of text: "a,F(*b,G[+c]),-".
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "TreeCtrlWrapper.h"

namespace support {

// Names of plug-ins, a folder's items in "()", or in "[]" when it is closed, "-" for a separator. "*" stands
// before the caret item, "^" when that is not selected, "+" before each other that is.

inline void BuildLayout(CTreeCtrlWrapper& layout, const std::wstring& text) {
    const CTreeCtrlEx& tree = layout.Tree();
    layout.Clear();
    std::vector<HTREEITEM> closed;
    std::vector<HTREEITEM> selected;
    HTREEITEM caret = nullptr;
    HTREEITEM parent = nullptr;
    std::wstring name;
    for (const wchar_t c : text + L',') {
        if (std::wstring_view(L",()[]").find(c) == std::wstring_view::npos) {
            name += c;
            continue;
        }
        const bool isFolder = c == L'(' || c == L'[';
        if (isFolder || !name.empty()) {
            const wchar_t mark = std::wstring_view(L"*^+").find(name[0]) < 3 ? name[0] : L' ';
            if (mark != L' ') name.erase(0, 1);
            LayoutItem record = isFolder ? NewFolder(name) : name == L"-" ? NewSeparator() : NewPlugin();
            if (record.kind == LayoutKind::Plugin) record.name = name;
            const HTREEITEM item = layout.Append(parent, record);
            if (mark == L'*' || mark == L'^') caret = item;
            if (mark == L'*' || mark == L'+') selected.push_back(item);
            if (c == L'[') closed.push_back(item);
            if (isFolder) parent = item;
        }
        if (c == L')' || c == L']') parent = tree.Parent(parent);
        name.clear();
    }
    layout.ExpandAll(true);
    for (const HTREEITEM folder : closed) tree.Expand(folder, false);
    tree.SelectOnly(caret);
    if (caret) tree.SetSelected(caret, false);
    for (const HTREEITEM item : selected) tree.SetSelected(item, true);
    layout.SetModified(false);
}

/// An item without a record is a "?"; one whose label is not its name has the label behind "=".
inline std::wstring LayoutText(const CTreeCtrlWrapper& layout, HTREEITEM parent = nullptr) {
    const CTreeCtrlEx& tree = layout.Tree();
    std::wstring text;
    for (const HTREEITEM item : layout.Children(parent)) {
        if (!text.empty()) text += L',';
        const bool isCaret = item == tree.Caret();
        if (tree.IsSelected(item)) text += isCaret ? L'*' : L'+';
        if (isCaret && !tree.IsSelected(item)) text += L'^';
        const LayoutItem record = layout.Find(item) ? *layout.Find(item) : NewFolder(L"?");
        text += record.kind == LayoutKind::Separator ? L"-" : record.name;
        const std::wstring label = tree.ItemText(item);
        if (!record.name.starts_with(label) || label.empty() != record.name.empty()) text += L'=' + label;
        if (record.kind != LayoutKind::Folder && !tree.Child(item)) continue;
        const bool isClosed = tree.Child(item) && !tree.IsExpanded(item);
        text += (isClosed ? L'[' : L'(') + LayoutText(layout, item) + (isClosed ? L']' : L')');
    }
    return text;
}

/// The first item of that name; null when there is none.
inline HTREEITEM ItemNamed(const CTreeCtrlWrapper& layout, std::wstring_view name) {
    HTREEITEM item = layout.FirstTopLevel();
    while (item && (!layout.Find(item) || layout.Find(item)->name != name))
        item = layout.Tree().NextInOrder(item);
    return item;
}

}  // namespace support
