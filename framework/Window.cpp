#include "Window.h"

std::wstring CWindow::Text() const {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(m_hwnd)), L'\0');
    const int length = ::GetWindowTextW(m_hwnd, text.data(), static_cast<int>(text.size()) + 1);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

Rect CWindow::WindowRect() const {
    RECT rect{};
    ::GetWindowRect(m_hwnd, &rect);
    return FromSystem(rect);
}

Rect CWindow::ClientRect() const {
    RECT rect{};
    ::GetClientRect(m_hwnd, &rect);
    return FromSystem(rect);
}

Rect CWindow::RectIn(HWND ancestor) const {
    RECT rect{};
    ::GetWindowRect(m_hwnd, &rect);
    ::MapWindowPoints(nullptr, ancestor, reinterpret_cast<POINT*>(&rect), 2);
    return FromSystem(rect);
}

Size TextExtent(HDC dc, const std::wstring& text) {
    SIZE extent{};
    ::GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &extent);
    return {extent.cx, extent.cy};
}

bool EndsLoop(const MSG& message) {
    if (message.message != WM_QUIT) return false;
    ::PostQuitMessage(static_cast<int>(message.wParam));
    return true;
}

void CGeometryBatch::Move(HWND window, const Rect& place) {
    // Even one that stands there already would take the system long.
    if (!m_batch || CWindow(window).RectIn(::GetParent(window)) == place) return;
    m_batch = ::DeferWindowPos(m_batch, window, nullptr, place.left, place.top, place.Width(), place.Height(),
                               SWP_NOZORDER | SWP_NOACTIVATE);
}
