#include "Controls.h"

#include <algorithm>
#include <array>

namespace {

constexpr int kMaxItemText = 1024;

/// Searches begin behind the row that they name.
constexpr auto kFromTheTop = static_cast<WPARAM>(-1);

/// Reads a row's text with the control's own pair of length and text messages.
std::wstring TextByMessages(const CWindow& control, UINT lengthMessage, UINT textMessage, int row) {
    const int length = control.SendInt(lengthMessage, row);
    if (length < 0) return {};
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    control.Send(textMessage, row, text.data());
    return text;
}

TVITEMW ItemWith(UINT mask, HTREEITEM item) {
    TVITEMW record{};
    record.mask = mask;
    record.hItem = item;
    return record;
}

std::optional<int> RowOrNothing(int row) { return row < 0 ? std::nullopt : std::optional(row); }

}  // namespace

void CListBox::Reserve(int rows, int charactersPerRow) const {
    Send(LB_INITSTORAGE, rows, LPARAM{rows} * charactersPerRow * LPARAM{sizeof(wchar_t)});
}

std::wstring CListBox::RowText(int row) const {
    return TextByMessages(*this, LB_GETTEXTLEN, LB_GETTEXT, row);
}

std::optional<int> CListBox::CurrentRow() const {
    // Where several can be selected, not every system says by LB_GETCURSEL what a click has done.
    const bool takesSeveral = (Style() & (LBS_EXTENDEDSEL | LBS_MULTIPLESEL)) != 0;
    if (!takesSeveral) return RowOrNothing(SendInt(LB_GETCURSEL));
    const auto selected = SelectedRows();
    return selected.size() == 1 ? std::optional(selected.front()) : CaretRow();
}

std::optional<int> CListBox::CaretRow() const {
    // An empty box may have its caret on row 0.
    return Count() > 0 ? RowOrNothing(SendInt(LB_GETCARETINDEX)) : std::nullopt;
}

void CListBox::SetCaretRow(int row) const {
    Send(LB_SETANCHORINDEX, row);
    Send(LB_SETCARETINDEX, row, FALSE);
}

std::vector<int> CListBox::SelectedRows() const {
    const int count = SelectedCount();
    if (count <= 0) return {};
    std::vector<int> rows(static_cast<std::size_t>(count));
    const int got = SendInt(LB_GETSELITEMS, rows.size(), rows.data());
    rows.resize(got < 0 ? 0U : static_cast<std::size_t>(got));
    return rows;
}

RECT CListBox::PlaceOf(int row) const {
    RECT place{};
    return SendInt(LB_GETITEMRECT, row, &place) < 0 ? RECT{} : place;
}

std::optional<int> CListBox::RowAt(POINT client) const {
    // The nearest one, wherever it is.
    const int row = LOWORD(Send(LB_ITEMFROMPOINT, 0, MAKELPARAM(client.x, client.y)));
    const RECT place = PlaceOf(row);
    return ::PtInRect(&place, client) ? std::optional(row) : std::nullopt;
}

void CListBox::FitScrollWidth() const {
    int widest = 0;
    {
        const CClientDC dc(*this);
        const CSelectedObject font(dc.Get(), Font());
        for (int row = 0; row < Count(); ++row)
            widest = std::max(widest, TextExtent(dc.Get(), RowText(row)).width);
    }
    constexpr int kMargins = 4;
    Send(LB_SETHORIZONTALEXTENT, widest + kMargins);
}

std::optional<int> CListBox::FindExact(const std::wstring& text) const {
    return RowOrNothing(SendText(LB_FINDSTRINGEXACT, kFromTheTop, text));
}

std::wstring CComboBox::RowText(int row) const {
    return TextByMessages(*this, CB_GETLBTEXTLEN, CB_GETLBTEXT, row);
}

std::optional<int> CComboBox::CurrentRow() const { return RowOrNothing(SendInt(CB_GETCURSEL)); }

std::optional<int> CComboBox::FindExact(const std::wstring& text) const {
    return RowOrNothing(SendText(CB_FINDSTRINGEXACT, kFromTheTop, text));
}

HTREEITEM CTreeView::Insert(HTREEITEM parent, HTREEITEM after, const std::wstring& text, int image,
                            int selectedImage, LPARAM data) const {
    TVINSERTSTRUCTW insert{};
    insert.hParent = parent ? parent : TVI_ROOT;
    insert.hInsertAfter = after;
    insert.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM;
    insert.item.pszText = const_cast<wchar_t*>(text.c_str());  // the control only reads it
    insert.item.iImage = image;
    insert.item.iSelectedImage = selectedImage;
    insert.item.lParam = data;
    return reinterpret_cast<HTREEITEM>(Send(TVM_INSERTITEMW, 0, &insert));
}

std::wstring CTreeView::ItemText(HTREEITEM item) const {
    std::array<wchar_t, kMaxItemText> buffer{};
    TVITEMW query = ItemWith(TVIF_TEXT, item);
    query.pszText = buffer.data();
    query.cchTextMax = kMaxItemText;
    if (!Send(TVM_GETITEMW, 0, &query)) return {};
    return query.pszText;
}

void CTreeView::SetItemText(HTREEITEM item, const std::wstring& text) const {
    TVITEMW change = ItemWith(TVIF_TEXT, item);
    change.pszText = const_cast<wchar_t*>(text.c_str());  // the control only reads it
    Send(TVM_SETITEMW, 0, &change);
}

LPARAM CTreeView::Data(HTREEITEM item) const {
    TVITEMW query = ItemWith(TVIF_PARAM, item);
    return Send(TVM_GETITEMW, 0, &query) ? query.lParam : 0;
}

void CTreeView::SetItemImages(HTREEITEM item, int image, int selectedImage) const {
    TVITEMW change = ItemWith(TVIF_IMAGE | TVIF_SELECTEDIMAGE, item);
    change.iImage = image;
    change.iSelectedImage = selectedImage;
    Send(TVM_SETITEMW, 0, &change);
}

void CTreeView::ScrollToTop(HTREEITEM item) const {
    const auto scroll = [this](HTREEITEM top) { Send(TVM_SELECTITEM, TVGN_FIRSTVISIBLE, top); };
    scroll(item);
    if (FirstVisible() == item) return;
    // Not every system does that for the caret item.
    if (const HTREEITEM next = NextVisible(item)) scroll(next);
    EnsureVisible(item);
}

void CTreeView::SortChildren(HTREEITEM parent, PFNTVCOMPARE compare, LPARAM context) const {
    TVSORTCB sort{parent ? parent : TVI_ROOT, compare, context};
    Send(TVM_SORTCHILDRENCB, 0, &sort);
}

HWND CreateToolTip(HWND dialog, DWORD extendedStyle) {
    return ::CreateWindowExW(WS_EX_TOPMOST | extendedStyle, TOOLTIPS_CLASSW, nullptr,
                             WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT,
                             CW_USEDEFAULT, CW_USEDEFAULT, dialog, nullptr, ::GetModuleHandleW(nullptr),
                             nullptr);
}

void CToolTips::Create(HWND dialog) {
    m_dialog = dialog;
    m_tip = CWindow(CreateToolTip(dialog));
}

void CToolTips::Add(HWND control) const {
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = m_dialog;
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    m_tip.Send(TTM_ADDTOOLW, 0, &tool);
}
