#include "ReviewDlg.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "Resources.h"
#include "TextFormat.h"
#include "resource.h"

namespace {

constexpr int kActions[] = {IDC_REVIEW_ACTION, IDC_REVIEW_ACTION_2};
constexpr UINT kTicked = INDEXTOSTATEIMAGEMASK(2);
constexpr UINT kUnticked = INDEXTOSTATEIMAGEMASK(1);
constexpr UINT kNoBox = INDEXTOSTATEIMAGEMASK(0);

/// What a control does when the dialog grows.
struct Growth {
    int id;
    bool left, top, right, bottom;  // the edges that follow the dialog's right and lower edge
};
constexpr Growth kGrowth[] = {
    {IDC_REVIEW_HEADING, false, false, true, false},
    {IDC_REVIEW_LIST, false, false, true, true},
    {IDC_REVIEW_ACTION, false, true, false, true},
    {IDC_REVIEW_ACTION_2, false, true, false, true},
    {IDOK, true, true, true, true},
    {IDCANCEL, true, true, true, true},
};

int CompareCells(const ReviewCell& a, const ReviewCell& b, bool byKey) {
    if (!byKey) return ::lstrcmpiW(a.text.c_str(), b.text.c_str());
    return a.key < b.key ? -1 : a.key > b.key ? 1 : 0;
}

/// The place of each row in the list. Rows that are alike in this column stay in the order that they were
/// given in.
std::vector<int> PlacesOf(const std::vector<ReviewRow>& rows, std::size_t column, bool byKey,
                          bool descending) {
    std::vector<std::size_t> order(rows.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, [&](std::size_t a, std::size_t b) {
        const int compared = CompareCells(rows[a].cells[column], rows[b].cells[column], byKey);
        return descending ? compared > 0 : compared < 0;
    });
    std::vector<int> places(rows.size());
    for (std::size_t place = 0; place < order.size(); ++place) places[order[place]] = static_cast<int>(place);
    return places;
}

/// The narrowest first: what one does not want of its share is left for wider ones.
std::vector<int> SharedOut(const std::vector<int>& wanted, int room) {
    std::vector<std::size_t> order(wanted.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [&](std::size_t column) { return wanted[column]; });
    std::vector<int> widths(wanted.size());
    auto takers = static_cast<int>(order.size());
    for (const std::size_t column : order) {
        const int share = room / takers;
        widths[column] = --takers > 0 ? std::min(wanted[column], share) : share;
        room -= widths[column];
    }
    return widths;
}

int CALLBACK ComparePlaces(LPARAM a, LPARAM b, LPARAM places) {
    const auto& all = *reinterpret_cast<const std::vector<int>*>(places);
    return all[static_cast<std::size_t>(a)] - all[static_cast<std::size_t>(b)];
}

void SetState(const CWindow& list, int item, UINT state, UINT mask) {
    LVITEMW record{};
    record.state = state;
    record.stateMask = mask;
    list.Send(LVM_SETITEMSTATE, item, &record);
}

std::size_t RowOf(const CWindow& list, int item) {
    LVITEMW record{};
    record.mask = LVIF_PARAM;
    record.iItem = item;
    list.Send(LVM_GETITEMW, 0, &record);
    return static_cast<std::size_t>(record.lParam);
}

}  // namespace

CReviewDlg::CReviewDlg(ReviewTexts texts, std::vector<ReviewColumn> columns, std::vector<ReviewRow> rows,
                       std::vector<ReviewAction> actions)
    : CDialog(IDD_REVIEW),
      m_texts(std::move(texts)),
      m_columns(std::move(columns)),
      m_rows(std::move(rows)),
      m_actions(std::move(actions)) {}

std::span<const CRoute> CReviewDlg::Routes() const {
    using Self = CReviewDlg;
    using R = CRoutesOf<CReviewDlg>;
    static constexpr CRoute kRoutes[] = {
        R::OnMessage<WM_SIZE, &Self::OnSize>(),
        R::OnMessage<WM_GETMINMAXINFO, &Self::OnSmallest>(),
        R::OnNotify<LVN_COLUMNCLICK, &Self::OnColumn>(IDC_REVIEW_LIST),
        R::OnNotify<LVN_ITEMCHANGING, &Self::OnItemChanging>(IDC_REVIEW_LIST),
        R::OnNotify<LVN_ITEMCHANGED, &Self::OnItemChanged>(IDC_REVIEW_LIST),
        R::OnCommand<BN_CLICKED, &Self::OnAction>(IDC_REVIEW_ACTION),
        R::OnCommand<BN_CLICKED, &Self::OnSecondAction>(IDC_REVIEW_ACTION_2),
    };
    return kRoutes;
}

bool CReviewDlg::OnInitDialog() {
    m_dpi = m_smallestDpi = ::GetDpiForWindow(m_hwnd);
    if (m_texts.help != 0) ::SetWindowContextHelpId(m_hwnd, m_texts.help);
    SetText(m_texts.caption);
    Item(IDC_REVIEW_HEADING).SetText(m_texts.heading);
    if (!m_texts.close.empty()) Item(IDCANCEL).SetText(m_texts.close);
    for (std::size_t i = 0; i < std::min(m_actions.size(), kMostActions); ++i) {
        Item(kActions[i]).SetText(m_actions[i].text);
        Item(kActions[i]).Show();
    }
    m_list = Item(IDC_REVIEW_LIST);
    m_list.SetText(m_texts.heading);  // never shown: some screen readers name a list by it
    FitScreen();
    constexpr DWORD kStyle = LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP | LVS_EX_DOUBLEBUFFER;
    m_list.Send(LVM_SETEXTENDEDLISTVIEWSTYLE, kStyle, kStyle);
    AddColumns();
    Fill();
    WidenForColumns();
    return true;
}

Rect CReviewDlg::ScreenArea() const {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    ::GetMonitorInfoW(::MonitorFromWindow(m_hwnd, MONITOR_DEFAULTTONEAREST), &monitor);
    return FromSystem(monitor.rcWork);
}

/// Where the screen is too low for the dialog, the list is lower.
void CReviewDlg::FitScreen() {
    // Not the client area: a system may have cut that to the screen.
    RECT designed{0, 0, REVIEW_DIALOG_WIDTH, REVIEW_DIALOG_HEIGHT};
    ::MapDialogRect(m_hwnd, &designed);
    m_client = {static_cast<int>(designed.right), static_cast<int>(designed.bottom)};
    const Rect area = ScreenArea();
    Rect window = WindowRect();
    if (area.Height() > 0 && window.Height() > area.Height()) {
        window.top = area.top;
        window.bottom = area.bottom;
        ::SetWindowPos(m_hwnd, nullptr, window.left, window.top, window.Width(), window.Height(),
                       SWP_NOZORDER | SWP_NOACTIVATE);
    }
    m_smallest = {window.Width(), window.Height()};
    const int scrollBar = ::GetSystemMetricsForDpi(SM_CXVSCROLL, m_dpi);
    m_besideColumns = m_client.width - m_list.ClientRect().Width() + scrollBar;
    OnSize({ClientRect().Width(), ClientRect().Height()});
}

void CReviewDlg::AddColumns() const {
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        std::wstring title = m_columns[i].title;
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_FMT;
        column.fmt = m_columns[i].order == ReviewOrder::ByKeyRight ? LVCFMT_RIGHT : LVCFMT_LEFT;
        column.pszText = title.data();
        m_list.Send(LVM_INSERTCOLUMNW, i, &column);
    }
}

void CReviewDlg::MeasureColumns() {
    // The last column is given what is left of the list, whatever it wants.
    LVCOLUMNW behind{};
    m_list.Send(LVM_INSERTCOLUMNW, m_columns.size(), &behind);
    m_wanted.assign(m_columns.size(), 0);
    for (const int kind : {LVSCW_AUTOSIZE, LVSCW_AUTOSIZE_USEHEADER}) {
        for (std::size_t i = 0; i < m_columns.size(); ++i)
            m_list.Send(LVM_SETCOLUMNWIDTH, i, MAKELPARAM(kind, 0));
        std::ranges::transform(m_wanted, ColumnWidths(), m_wanted.begin(),
                               [](int a, int b) { return std::max(a, b); });
    }
    m_list.Send(LVM_DELETECOLUMN, m_columns.size());
    // Of the titles not every system counts the margins, and none the arrow.
    const int beside = 2 * ::GetSystemMetricsForDpi(SM_CXVSCROLL, m_dpi);
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const int title = m_list.SendInt(LVM_GETSTRINGWIDTH, 0, m_columns[i].title.c_str());
        m_wanted[i] = std::max(m_wanted[i], title + beside);
    }
    ShareOutColumns();
}

/// To both sides, and within the screen.
void CReviewDlg::WidenForColumns() {
    const int more = std::accumulate(m_wanted.begin(), m_wanted.end(), 0) - RoomForColumns();
    if (more <= 0) return;
    const Rect area = ScreenArea();
    const Rect window = WindowRect();
    const int width = std::max(std::min(window.Width() + more, area.Width()), window.Width());
    const int left = std::max(std::min(window.left - more / 2, area.right - width), area.left);
    ::SetWindowPos(m_hwnd, nullptr, left, window.top, width, window.Height(), SWP_NOZORDER | SWP_NOACTIVATE);
}

int CReviewDlg::RoomForColumns() const {
    const int beside = ::MulDiv(m_besideColumns, static_cast<int>(m_dpi), static_cast<int>(m_smallestDpi));
    return std::max(m_client.width - beside, 0);
}

void CReviewDlg::ShareOutColumns() {
    m_sharedOut = SharedOut(m_wanted, RoomForColumns());
    for (std::size_t i = 0; i < m_sharedOut.size(); ++i)
        m_list.Send(LVM_SETCOLUMNWIDTH, i, MAKELPARAM(m_sharedOut[i], 0));
}

std::vector<int> CReviewDlg::ColumnWidths() const {
    std::vector<int> widths;
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        widths.push_back(m_list.SendInt(LVM_GETCOLUMNWIDTH, i));
    return widths;
}

void CReviewDlg::SetRows(std::vector<ReviewRow> rows) {
    m_rows = std::move(rows);
    if (m_list.IsLive()) Fill();
}

void CReviewDlg::Fill() {
    const CRedrawLock noRedraw(m_list);
    m_filling = true;
    m_list.Send(LVM_DELETEALLITEMS);
    m_list.Send(LVM_SETITEMCOUNT, m_rows.size());
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        LVITEMW item{};
        item.mask = LVIF_PARAM;
        item.iItem = static_cast<int>(i);
        item.lParam = static_cast<LPARAM>(i);
        const int added = m_list.SendInt(LVM_INSERTITEMW, 0, &item);
        for (std::size_t column = 0; column < m_columns.size(); ++column) {
            LVITEMW cell{};
            cell.iSubItem = static_cast<int>(column);
            cell.pszText = m_rows[i].cells[column].text.data();
            m_list.Send(LVM_SETITEMTEXTW, added, &cell);
        }
        ShowTick(added);
    }
    m_filling = false;
    m_checked = static_cast<int>(std::ranges::count(m_rows, true, &ReviewRow::checked));
    MeasureColumns();
    Sort();
    SetState(m_list, 0, LVIS_FOCUSED | LVIS_SELECTED, LVIS_FOCUSED | LVIS_SELECTED);
    UpdateButtons();
}

void CReviewDlg::Sort() {
    const auto column = static_cast<std::size_t>(m_sortedBy);
    const std::vector<int> places =
        PlacesOf(m_rows, column, m_columns[column].order != ReviewOrder::ByText, m_descending);
    m_list.Send(LVM_SORTITEMS, &places, &ComparePlaces);
    ShowOrder();
}

/// The arrow in the title.
void CReviewDlg::ShowOrder() const {
    const CWindow header(reinterpret_cast<HWND>(m_list.Send(LVM_GETHEADER)));
    for (int i = 0; i < static_cast<int>(m_columns.size()); ++i) {
        HDITEMW title{};
        title.mask = HDI_FORMAT;
        header.Send(HDM_GETITEMW, i, &title);
        title.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (i == m_sortedBy) title.fmt |= m_descending ? HDF_SORTDOWN : HDF_SORTUP;
        header.Send(HDM_SETITEMW, i, &title);
    }
}

void CReviewDlg::SortBy(int column, bool descending) {
    m_sortedBy = column;
    m_descending = descending;
    if (m_list.IsLive()) Sort();
}

void CReviewDlg::OnColumn(const NMLISTVIEW& click) {
    SortBy(click.iSubItem, click.iSubItem == m_sortedBy && !m_descending);
    // The row that the keyboard is on stays in sight.
    m_list.Send(LVM_ENSUREVISIBLE, m_list.SendInt(LVM_GETNEXTITEM, -1, LVNI_FOCUSED));
}

/// True keeps the row as it is: the control gives a box to any row that Space is pressed on.
bool CReviewDlg::OnItemChanging(const NMLISTVIEW& item) const {
    const UINT tick = item.uNewState & LVIS_STATEIMAGEMASK;
    return !m_filling && item.iItem >= 0 && tick != kNoBox &&
           tick != (item.uOldState & LVIS_STATEIMAGEMASK) && !m_rows[RowOf(m_list, item.iItem)].canBeChecked;
}

void CReviewDlg::OnItemChanged(const NMLISTVIEW& item) {
    if (m_filling) return;
    const UINT tick = item.uNewState & LVIS_STATEIMAGEMASK;
    if (tick != 0 && item.iItem >= 0) {
        const std::size_t row = RowOf(m_list, item.iItem);
        m_checked += (tick == kTicked ? 1 : 0) - (m_rows[row].checked ? 1 : 0);
        m_rows[row].checked = tick == kTicked;
    }
    UpdateButtons();
}

void CReviewDlg::UpdateButtons() const {
    const std::wstring text = FormatText(m_texts.button, m_checked);
    if (Item(IDOK).Text() != text) Item(IDOK).SetText(text);
    EnableItem(IDOK, m_checked > 0, IDC_REVIEW_LIST);
    for (std::size_t i = 0; i < std::min(m_actions.size(), kMostActions); ++i) {
        const bool has = m_actions[i].needsChecked ? m_checked > 0 : Current().has_value();
        EnableItem(kActions[i], has, IDC_REVIEW_LIST);
    }
}

/// Enter asks for it also while the button can't be pressed.
void CReviewDlg::OnOK() {
    if (m_checked > 0) CDialog::OnOK();
}

std::vector<std::size_t> CReviewDlg::Checked() const {
    std::vector<std::size_t> rows;
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        if (m_rows[i].checked) rows.push_back(i);
    }
    return rows;
}

std::optional<std::size_t> CReviewDlg::Current() const {
    const int item = m_list.SendInt(LVM_GETNEXTITEM, -1, LVNI_FOCUSED);
    return item < 0 ? std::nullopt : std::optional(RowOf(m_list, item));
}

void CReviewDlg::Run(std::size_t action) {
    if (action < m_actions.size()) m_actions[action].run(*this);
}

void CReviewDlg::ShowTick(int item) const {
    const ReviewRow& row = m_rows[RowOf(m_list, item)];
    const UINT box = row.checked ? kTicked : kUnticked;
    SetState(m_list, item, row.canBeChecked || row.checked ? box : kNoBox, LVIS_STATEIMAGEMASK);
}

void CReviewDlg::TickAll() {
    const bool tick =
        std::ranges::any_of(m_rows, [](const ReviewRow& row) { return row.canBeChecked && !row.checked; });
    const CRedrawLock noRedraw(m_list);
    m_filling = true;
    for (ReviewRow& row : m_rows) row.checked = row.canBeChecked ? tick : row.checked;
    for (int item = 0; item < static_cast<int>(m_rows.size()); ++item) ShowTick(item);
    m_filling = false;
    m_checked = static_cast<int>(std::ranges::count(m_rows, true, &ReviewRow::checked));
    UpdateButtons();
}

bool CReviewDlg::PreTranslate(const MSG& message) {
    const bool isCtrlA = message.message == WM_KEYDOWN && message.wParam == L'A' &&
                         ::GetKeyState(VK_CONTROL) < 0 && ::GetKeyState(VK_MENU) >= 0;
    if (!isCtrlA || !m_list.HasFocus()) return false;
    TickAll();
    return true;
}

void CReviewDlg::OnSize(Size client) {
    const UINT dpi = ::GetDpiForWindow(m_hwnd);
    const Size growth{client.width - m_client.width, client.height - m_client.height};
    const bool shown = m_client.width > 0 && client.width > 0;
    if (!shown) return;
    const bool grows = dpi == m_dpi;  // else the system scales the dialog, and moves its controls
    for (int& width : m_wanted) width = ::MulDiv(width, static_cast<int>(dpi), static_cast<int>(m_dpi));
    m_client = client;
    m_dpi = dpi;
    // Edges that the user has dragged stay there.
    if (ColumnWidths() == m_sharedOut) ShareOutColumns();
    if (!grows) return;
    {
        CGeometryBatch batch(static_cast<int>(std::size(kGrowth)));
        for (const auto& [id, left, top, right, bottom] : kGrowth) {
            Rect place = Item(id).RectIn(m_hwnd);
            if (left) place.left += growth.width;
            if (top) place.top += growth.height;
            if (right) place.right += growth.width;
            if (bottom) place.bottom += growth.height;
            batch.Move(Item(id).Handle(), place);
        }
    }
    // The heading breaks elsewhere, and not every system paints what was moved.
    ::RedrawWindow(m_hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void CReviewDlg::OnSmallest(MINMAXINFO& sizes) const {
    if (m_smallestDpi == 0) return;
    const auto first = static_cast<int>(m_smallestDpi);
    const auto now = static_cast<int>(::GetDpiForWindow(m_hwnd));
    sizes.ptMinTrackSize = {::MulDiv(m_smallest.width, now, first), ::MulDiv(m_smallest.height, now, first)};
}
