#include "LayoutDrag.h"

#include <algorithm>

namespace {

/// Where the pointer holds the image.
constexpr int kHotSpot = 5;

/// The image shows so many of the dragged items; more would hide the tree.
constexpr std::size_t kShownItems = 8;

constexpr COLORREF kTransparent = RGB(255, 0, 255);

/// A device context and what was selected into it, put back at the end.
class CDrawing {
  public:
    CDrawing(HDC screen, HBITMAP bitmap, HFONT font)
        : m_dc(::CreateCompatibleDC(screen)),
          m_bitmap(::SelectObject(m_dc, bitmap)),
          m_font(::SelectObject(m_dc, font)) {}
    ~CDrawing() {
        ::SelectObject(m_dc, m_font);
        ::SelectObject(m_dc, m_bitmap);
        ::DeleteDC(m_dc);
    }
    CDrawing(const CDrawing&) = delete;
    CDrawing& operator=(const CDrawing&) = delete;
    HDC Dc() const { return m_dc; }

  private:
    HDC m_dc;
    HGDIOBJ m_bitmap;
    HGDIOBJ m_font;
};

}  // namespace

void CLayoutDrag::Begin(HTREEITEM item, POINT client) {
    if (!Tree().IsSelected(item)) Tree().SelectOnly(item);
    m_dragged = static_cast<LayoutItemId>(Tree().Data(item));
    m_items = m_layout.SelectedIds();
    m_lowerHalf = m_belowDragged = m_onItself = false;
    m_image = DrawImage();
    m_dragging = true;
    ::SetCapture(m_dialog.Handle());
    if (m_image && ::ImageList_BeginDrag(m_image.Get(), 0, kHotSpot, kHotSpot)) {
        ::ImageList_DragEnter(Tree().Handle(), client.x, client.y);
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
    const CClientDC screen(Tree());
    const UniqueBitmap bitmap(::CreateCompatibleBitmap(screen.Get(), width, height));
    {
        const CDrawing drawing(screen.Get(), bitmap.Get(), reinterpret_cast<HFONT>(Tree().Send(WM_GETFONT)));
        ::SetBkColor(drawing.Dc(), kTransparent);
        const RECT all{0, 0, width, height};
        ::ExtTextOutW(drawing.Dc(), 0, 0, ETO_OPAQUE, &all, nullptr, 0, nullptr);
        ::SetTextColor(drawing.Dc(), ::GetSysColor(COLOR_WINDOWTEXT));
        int iconWidth = 0;
        int iconHeight = 0;
        ::ImageList_GetIconSize(icons, &iconWidth, &iconHeight);
        for (std::size_t row = 0; row < rows; ++row) {
            const LayoutItem* item = m_layout.Find(m_layout.HandleOf(m_items[row]));
            if (!item) continue;
            const int top = rowHeight * static_cast<int>(row);
            ::ImageList_Draw(icons, ImagesOf(*item).normal, drawing.Dc(), 0, top, ILD_TRANSPARENT);
            RECT label{iconWidth + kHotSpot, top, width, top + rowHeight};
            ::DrawTextW(drawing.Dc(), item->name.c_str(), static_cast<int>(item->name.size()), &label,
                        DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
        }
    }
    UniqueImageList image(::ImageList_Create(width, height, ILC_COLOR24 | ILC_MASK, 1, 0));
    if (image) ::ImageList_AddMasked(image.Get(), bitmap.Get(), kTransparent);
    return image;
}

void CLayoutDrag::OnMouseMove(POINT client) {
    if (!m_dragging) return;
    POINT inTree = client;
    ::MapWindowPoints(m_dialog.Handle(), Tree().Handle(), &inTree, 1);
    ::ImageList_DragMove(inTree.x, inTree.y);
    // The tree paints below the image, which has to make room.
    ::ImageList_DragShowNolock(FALSE);
    Highlight(inTree);
    ScrollBeyond(inTree);
    ::UpdateWindow(Tree().Handle());
    ::ImageList_DragShowNolock(TRUE);
}

void CLayoutDrag::Highlight(POINT inTree) {
    RECT dragged{};
    m_belowDragged = Tree().RowOf(m_layout.HandleOf(m_dragged), dragged) && inTree.y >= dragged.bottom;
    const HTREEITEM item = Tree().HitTest(inTree);
    RECT row{};
    if (Tree().RowOf(item, row)) m_lowerHalf = inTree.y > (row.top + row.bottom) / 2;
    m_onItself = IsDragged(item);
    const HTREEITEM target = m_onItself ? nullptr : item;
    Tree().Send(TVM_SELECTITEM, TVGN_DROPHILITE, reinterpret_cast<LPARAM>(target));
}

bool CLayoutDrag::IsDragged(HTREEITEM item) const {
    return item && std::ranges::find(m_items, static_cast<LayoutItemId>(Tree().Data(item))) != m_items.end();
}

bool CLayoutDrag::GoesAlong(HTREEITEM item) const {
    for (; item; item = Tree().Parent(item)) {
        if (IsDragged(item)) return true;
    }
    return false;
}

void CLayoutDrag::ScrollBeyond(POINT inTree) {
    const Rect client = Tree().ClientRect();
    if (inTree.y >= client.top && inTree.y < client.bottom) return;
    const bool above = inTree.y < client.top;
    auto edge = reinterpret_cast<HTREEITEM>(Tree().Send(TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE));
    if (!above) {
        // The last item that the client area shows in full.
        const int visible = Tree().SendInt(TVM_GETVISIBLECOUNT);
        for (int i = 1; i < visible && edge; ++i) {
            const auto next = reinterpret_cast<HTREEITEM>(
                Tree().Send(TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, reinterpret_cast<LPARAM>(edge)));
            if (!next) break;
            edge = next;
        }
    }
    const auto beyond = reinterpret_cast<HTREEITEM>(Tree().Send(
        TVM_GETNEXTITEM, above ? TVGN_PREVIOUSVISIBLE : TVGN_NEXTVISIBLE, reinterpret_cast<LPARAM>(edge)));
    if (!beyond) return;
    Tree().Send(TVM_SELECTITEM, TVGN_DROPHILITE, reinterpret_cast<LPARAM>(beyond));
    Tree().EnsureVisible(beyond);
}

void CLayoutDrag::End() {
    m_dragging = false;
    if (m_image) {
        ::ImageList_DragLeave(Tree().Handle());
        ::ImageList_EndDrag();
        m_image.Reset();
    }
    if (::GetCapture() == m_dialog.Handle()) ::ReleaseCapture();
    Tree().Send(TVM_SELECTITEM, TVGN_DROPHILITE, 0);
}

void CLayoutDrag::Cancel() {
    if (m_dragging) End();
}

DropFacts CLayoutDrag::FactsOf(HTREEITEM target) const {
    const LayoutItem* record = m_layout.Find(target);
    return {.onItem = target != nullptr,
            .lowerHalf = m_lowerHalf,
            .onFolder = record && record->kind == LayoutKind::Folder,
            .hasPrevious = m_layout.CanMoveUp(target),
            .belowDragged = m_belowDragged};
}

HTREEITEM CLayoutDrag::MoveFirst(HTREEITEM item, HTREEITEM target) {
    switch (PlaceOfDrop(FactsOf(target))) {
        case DropPlace::AfterPrevious:
            return m_layout.MoveAfter(item, Tree().PreviousSibling(target));
        case DropPlace::FirstOfParent:
            return m_layout.MoveInto(item, Tree().Parent(target), true);
        case DropPlace::LastInside:
            return m_layout.MoveInto(item, target, false);
        case DropPlace::AfterItem:
            return m_layout.MoveAfter(item, target);
        case DropPlace::TopLevelFirst:
            return m_layout.MoveInto(item, nullptr, true);
        case DropPlace::TopLevelLast:
            break;
    }
    return m_layout.MoveInto(item, nullptr, false);
}

void CLayoutDrag::Drop() {
    const auto target = reinterpret_cast<HTREEITEM>(Tree().Send(TVM_GETNEXTITEM, TVGN_DROPHILITE));
    const auto targetId = static_cast<LayoutItemId>(target ? Tree().Data(target) : 0);
    const bool moves = m_image && !m_onItself && !GoesAlong(target);
    End();
    if (!moves) return;
    const CTreeHold hold(m_layout.Scroll());
    HTREEITEM last = nullptr;
    for (const LayoutItemId id : m_items) {
        // Handles change with every move, and what lies in a dragged folder moves with it.
        const HTREEITEM item = m_layout.HandleOf(id);
        if (!item || GoesAlong(Tree().Parent(item))) continue;
        last = last ? m_layout.MoveAfter(item, last) : MoveFirst(item, m_layout.HandleOf(targetId));
    }
    Tree().ClearSelection();
}
