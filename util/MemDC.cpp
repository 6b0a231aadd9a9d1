#include "MemDC.h"

CWMemDC::CWMemDC(HDC target) : m_target(target) {
    ::GetClipBox(target, &m_box);
    m_bitmap.Reset(::CreateCompatibleBitmap(target, m_box.right - m_box.left, m_box.bottom - m_box.top));
    if (m_bitmap) m_dc.Reset(::CreateCompatibleDC(target));
    if (!m_dc) return;
    ::SelectObject(m_dc.Get(), m_bitmap.Get());
    ::SetWindowOrgEx(m_dc.Get(), m_box.left, m_box.top, nullptr);
}

CWMemDC::~CWMemDC() {
    if (!m_dc) return;
    ::BitBlt(m_target, m_box.left, m_box.top, m_box.right - m_box.left, m_box.bottom - m_box.top, m_dc.Get(),
             m_box.left, m_box.top, SRCCOPY);
}
