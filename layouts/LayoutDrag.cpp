#include "LayoutDrag.h"

#include <algorithm>
#include <utility>

namespace {

/// A closed folder opens when the pointer has rested on it for so long.
constexpr UINT kOpenDelay = 800;  // ms

/// Where the pointer holds the image.
constexpr int kHotSpot = 5;

/// The image shows so many of the dragged items; more would hide the tree.
constexpr std::size_t kShownItems = 8;

/// The system moves the image by places counted from a window's corner, not from its client area's.
POINT InWindow(const CWindow& window, POINT client) {
    ::ClientToScreen(window.Handle(), &client);
    const Rect place = window.WindowRect();
    return {client.x - place.left, client.y - place.top};
}

}  // namespace

void CLayoutDrag::Begin(HTREEITEM item, POINT client) {
    if (!Tree().IsSelected(item)) Tree().SelectOnly(item);
    m_dragged = static_cast<LayoutItemId>(Tree().Data(item));
    m_items = m_layout.SelectedIds();
    m_lowerHalf = m_belowDragged = m_onItself = false;
    m_image = DrawImage();
    m_dragging = true;
    Tree().Focus();
    ::SetCapture(m_dialog.Handle());
    if (m_image && ::ImageList_BeginDrag(m_image.Get(), 0, kHotSpot, kHotSpot)) {
        const POINT place = InWindow(Tree(), client);
        ::ImageList_DragEnter(Tree().Handle(), place.x, place.y);
    }
}

/// The tree's own drag image shows one item, and not every system draws one: this shows the icons and labels
/// of the first few.
UniqueImageList CLayoutDrag::DrawImage() const {
    const std::size_t rows = std::min(m_items.size(), kShownItems);
    const int rowHeight = Tree().SendInt(TVM_GETITEMHEIGHT);
    const auto icons = reinterpret_cast<HIMAGELIST>(Tree().Send(TVM_GETIMAGELIST, TVSIL_NORMAL));
    const int width = Tree().ClientRect().Width();
    const int height = rowHeight * static_cast<int>(rows);
    if (rows == 0 || width <= 0) return {};
    // Smoothed letters keep some of what they are drawn on: of the tree's own colour nobody sees that.
    const COLORREF transparent = ::GetSysColor(COLOR_WINDOW);
    const CClientDC screen(Tree());
    const UniqueBitmap bitmap(::CreateCompatibleBitmap(screen.Get(), width, height));
    {
        const UniqueDc dc(::CreateCompatibleDC(screen.Get()));
        const CSelectedObject selectedBitmap(dc.Get(), bitmap.Get());
        const CSelectedObject selectedFont(dc.Get(), Tree().Font());
        ::SetBkColor(dc.Get(), transparent);
        const RECT all{0, 0, width, height};
        ::ExtTextOutW(dc.Get(), 0, 0, ETO_OPAQUE, &all, nullptr, 0, nullptr);
        ::SetTextColor(dc.Get(), ::GetSysColor(COLOR_WINDOWTEXT));
        int iconWidth = 0;
        int iconHeight = 0;
        ::ImageList_GetIconSize(icons, &iconWidth, &iconHeight);
        for (std::size_t row = 0; row < rows; ++row) {
            const LayoutItem* item = m_layout.Find(m_layout.HandleOf(m_items[row]));
            if (!item) continue;
            const int top = rowHeight * static_cast<int>(row);
            ::ImageList_Draw(icons, ImagesOf(*item).normal, dc.Get(), 0, top, ILD_TRANSPARENT);
            RECT label{iconWidth, top, width, top + rowHeight};
            ::DrawTextW(dc.Get(), item->name.c_str(), static_cast<int>(item->name.size()), &label,
                        DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
        }
    }
    UniqueImageList image(::ImageList_Create(width, height, ILC_COLOR24 | ILC_MASK, 1, 0));
    if (image) ::ImageList_AddMasked(image.Get(), bitmap.Get(), transparent);
    return image;
}

void CLayoutDrag::OnMouseMove(POINT client) {
    if (!m_dragging) return;
    m_pointer = client;
    ::MapWindowPoints(m_dialog.Handle(), Tree().Handle(), &m_pointer, 1);
    const POINT place = InWindow(Tree(), m_pointer);
    ::ImageList_DragMove(place.x, place.y);
    ShowPlace();
}

void CLayoutDrag::ShowPlace() {
    ::ImageList_DragShowNolock(FALSE);
    Highlight();
    ScrollBeyond();
    MarkPlace();
    AwaitOpening();
    ::UpdateWindow(Tree().Handle());
    ::ImageList_DragShowNolock(TRUE);
    ::SetCursor(::LoadCursorW(nullptr, m_inside ? IDC_ARROW : IDC_NO));
}

void CLayoutDrag::Highlight() {
    const Rect client = Tree().ClientRect();
    m_inside = m_pointer.x >= client.left && m_pointer.x < client.right && m_pointer.y >= client.top &&
               m_pointer.y < client.bottom;
    RECT dragged{};
    m_belowDragged = Tree().RowOf(m_layout.HandleOf(m_dragged), dragged) && m_pointer.y >= dragged.bottom;
    const HTREEITEM item = Tree().HitTest(m_pointer);
    RECT row{};
    if (Tree().RowOf(item, row)) m_lowerHalf = m_pointer.y > (row.top + row.bottom) / 2;
    m_onItself = IsDragged(item);
    Tree().SetDropTarget(m_onItself ? nullptr : item);
}

bool CLayoutDrag::CanDrop() const {
    return m_image && m_inside && !m_onItself && !IsWithinDragged(Tree().DropTarget());
}

void CLayoutDrag::MarkPlace() const {
    const HTREEITEM target = Tree().DropTarget();
    const DropPlace place = PlaceOn(target);
    if (!CanDrop() || (target && place.parent == target)) return Tree().RemoveInsertMark();
    if (target) return Tree().SetInsertMark(target, place.after == target, target);
    const bool last = place.after == TVI_LAST;
    Tree().SetInsertMark(last ? LastVisible() : Tree().Root(), last, Tree().Root());
}

HTREEITEM CLayoutDrag::LastVisible() const {
    HTREEITEM last = Tree().FirstVisible();
    while (const HTREEITEM next = Tree().NextVisible(last)) last = next;
    return last;
}

void CLayoutDrag::AwaitOpening() {
    const HTREEITEM target = Tree().DropTarget();
    const bool opens = CanDrop() && target && Tree().Child(target) && !Tree().IsExpanded(target);
    const auto folder = opens ? static_cast<LayoutItemId>(Tree().Data(target)) : kInvalidItemId;
    if (folder == std::exchange(m_opening, folder)) return;
    opens ? Tree().StartTimer(kOpenDelay) : Tree().StopTimer();
}

void CLayoutDrag::OnTimer() {
    const HTREEITEM folder = m_layout.HandleOf(std::exchange(m_opening, kInvalidItemId));
    if (!m_dragging || !folder) return;
    ::ImageList_DragShowNolock(FALSE);
    Tree().Expand(folder, true);
    ShowPlace();
}

bool CLayoutDrag::IsDragged(HTREEITEM item) const {
    return item && std::ranges::find(m_items, static_cast<LayoutItemId>(Tree().Data(item))) != m_items.end();
}

bool CLayoutDrag::IsWithinDragged(HTREEITEM item) const {
    for (; item; item = Tree().Parent(item)) {
        if (IsDragged(item)) return true;
    }
    return false;
}

void CLayoutDrag::ScrollBeyond() const {
    const Rect client = Tree().ClientRect();
    if (m_pointer.y >= client.top && m_pointer.y < client.bottom) return;
    const bool above = m_pointer.y < client.top;
    HTREEITEM edge = Tree().FirstVisible();
    if (!above) {
        // The last item that the client area shows in full.
        const int visible = Tree().SendInt(TVM_GETVISIBLECOUNT);
        for (int i = 1; i < visible && edge; ++i) {
            const HTREEITEM next = Tree().NextVisible(edge);
            if (!next) break;
            edge = next;
        }
    }
    const HTREEITEM beyond = above ? Tree().PreviousVisible(edge) : Tree().NextVisible(edge);
    if (!beyond) return;
    Tree().SetDropTarget(beyond);
    Tree().EnsureVisible(beyond);
}

void CLayoutDrag::End() {
    m_dragging = false;
    m_opening = kInvalidItemId;
    Tree().StopTimer();
    ::SetCursor(::LoadCursorW(nullptr, IDC_ARROW));
    if (m_image) {
        ::ImageList_DragLeave(Tree().Handle());
        ::ImageList_EndDrag();
        m_image.Reset();
    }
    if (::GetCapture() == m_dialog.Handle()) ::ReleaseCapture();
    Tree().RemoveInsertMark();
    Tree().SetDropTarget(nullptr);
}

void CLayoutDrag::Cancel() {
    if (m_dragging) End();
}

/// On an item: before it in the upper half of its row; in the lower half inside it when it is a folder, else
/// behind it.
CLayoutDrag::DropPlace CLayoutDrag::PlaceOn(HTREEITEM target) const {
    if (!target) return {nullptr, m_belowDragged ? TVI_LAST : TVI_FIRST};
    const HTREEITEM parent = Tree().Parent(target);
    if (!m_lowerHalf) {
        const HTREEITEM previous = Tree().PreviousSibling(target);
        return {parent, previous ? previous : TVI_FIRST};
    }
    const LayoutItem* record = m_layout.Find(target);
    const bool isFolder = record && record->kind == LayoutKind::Folder;
    return isFolder ? DropPlace{target, TVI_LAST} : DropPlace{parent, target};
}

void CLayoutDrag::Drop() {
    const DropPlace place = PlaceOn(Tree().DropTarget());
    const bool moves = CanDrop();
    End();
    if (!moves) return;
    const CTreeHold hold(m_layout.Scroll());
    HTREEITEM last = nullptr;
    for (const LayoutItemId id : m_items) {
        // Handles change with every move, and what lies in a dragged folder moves with it.
        const HTREEITEM item = m_layout.HandleOf(id);
        if (!item || IsWithinDragged(Tree().Parent(item))) continue;
        last = m_layout.Move(item, place.parent, last ? last : place.after, MovedSelection::Lost);
    }
    if (last) Tree().MoveCaret(Tree().Shown(last));
    Tree().ClearSelection();
}
