#include "LayoutSearch.h"

#include "ClsidText.h"
#include "FoldedText.h"
#include "WordMatch.h"

namespace {

bool Has(const LayoutItem& item, std::span<const std::wstring> words) {
    if (item.kind == LayoutKind::Separator) return false;
    std::wstring text = item.name;
    if (item.kind == LayoutKind::Plugin)
        text += L'\n' + item.vendor.value_or(L"") + L'\n' + ClsidText(item.clsid);
    return MatchesWords(FoldedText(text), words);
}

}  // namespace

HTREEITEM FindNextItem(const CTreeCtrlWrapper& layout, std::span<const std::wstring> words,
                       SearchOrder order) {
    const CTreeCtrlEx& tree = layout.Tree();
    const HTREEITEM caret = tree.Caret();
    HTREEITEM item = caret;
    HTREEITEM last = nullptr;
    for (int left = tree.Count(); left > 0; --left) {
        if (item) item = tree.NextInOrder(item);
        if (!item) item = tree.Root();
        const LayoutItem* record = layout.Find(item);
        if (!record || !Has(*record, words)) continue;
        if (order == SearchOrder::Forwards) return item;
        if (item != caret || !last) last = item;
    }
    return last;
}
