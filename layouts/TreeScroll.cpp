#include "TreeScroll.h"

void CTreeScroll::Hold() {
    if (m_holds++ > 0) return;
    m_tree.Send(WM_SETREDRAW, FALSE);
    m_top = m_tree.FirstVisible();
    m_atStart = m_top == m_tree.Root();
    m_first = m_last = nullptr;
}

void CTreeScroll::Release() {
    if (--m_holds > 0) return;
    m_tree.Send(WM_SETREDRAW, TRUE);
    if (const HTREEITEM top = m_atStart ? m_tree.Root() : m_tree.Shown(m_top)) m_tree.ScrollToTop(top);
    for (const HTREEITEM item : {m_last, m_first}) {
        if (item) m_tree.EnsureVisible(m_tree.Shown(item));
    }
    ::InvalidateRect(m_tree.Handle(), nullptr, TRUE);
}

void CTreeScroll::Show(HTREEITEM item) {
    if (!m_first) m_first = item;
    m_last = item;
}

void CTreeScroll::BeforeDelete(HTREEITEM item, HTREEITEM replacement) {
    if (m_tree.IsWithin(m_top, item)) m_top = m_tree.NextBehind(item);
    for (HTREEITEM* shown : {&m_first, &m_last}) {
        if (m_tree.IsWithin(*shown, item)) *shown = replacement;
    }
}

void CTreeScroll::Forget(HTREEITEM item) {
    for (HTREEITEM* kept : {&m_top, &m_first, &m_last}) {
        if (*kept == item) *kept = nullptr;
    }
}
