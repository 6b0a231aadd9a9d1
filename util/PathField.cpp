#include "PathField.h"

Answer CPathField::OnMessage(UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
    switch (message) {
        case WM_PAINT:
            if (HasFocus()) break;
            Paint();
            return 0;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            ::InvalidateRect(m_hwnd, nullptr, TRUE);
            break;
        default:
            break;
    }
    return std::nullopt;
}

void CPathField::Paint() const {
    PAINTSTRUCT paint{};
    const HDC dc = ::BeginPaint(m_hwnd, &paint);
    {
        const CSelectedObject font(dc, Font());
        // The dialog sets the colours that a field of this kind has.
        ::SendMessageW(::GetParent(m_hwnd), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
                       reinterpret_cast<LPARAM>(m_hwnd));
        RECT place{};
        Send(EM_GETRECT, 0, &place);
        ::DrawTextW(dc, Text().c_str(), -1, &place, DT_SINGLELINE | DT_NOPREFIX | DT_PATH_ELLIPSIS);
    }
    ::EndPaint(m_hwnd, &paint);
}
