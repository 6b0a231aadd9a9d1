#include "ThemeHelper.h"

#include "Window.h"

const CXThemeHelper& CXThemeHelper::Instance() {
    static const CXThemeHelper instance;
    return instance;
}

CXThemeHelper::CXThemeHelper(const wchar_t* library)
    : m_library(::LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {
    const HMODULE module = m_library.Get();
    const bool complete =
        module && FindFunction(module, "CloseThemeData", m_closeThemeData) &&
        FindFunction(module, "DrawThemeBackground", m_drawThemeBackground) &&
        FindFunction(module, "DrawThemeText", m_drawThemeText) &&
        FindFunction(module, "GetThemeBackgroundContentRect", m_getThemeBackgroundContentRect) &&
        FindFunction(module, "IsAppThemed", m_isAppThemed) &&
        FindFunction(module, "IsThemeActive", m_isThemeActive) &&
        FindFunction(module, "OpenThemeData", m_openThemeData);
    if (!complete) m_library.Reset();
}

bool CXThemeHelper::IsThemed() const { return IsAvailable() && m_isThemeActive() && m_isAppThemed(); }

HTHEME CXThemeHelper::Open(HWND window, const wchar_t* themeClass) const {
    return IsAvailable() ? m_openThemeData(window, themeClass) : nullptr;
}

void CXThemeHelper::Close(HTHEME theme) const {
    if (IsAvailable() && theme) m_closeThemeData(theme);
}

void CXThemeHelper::DrawBackground(HTHEME theme, HDC dc, int part, int state, const Rect& place) const {
    const RECT rect = ToSystem(place);
    if (IsAvailable()) m_drawThemeBackground(theme, dc, part, state, &rect, nullptr);
}

Rect CXThemeHelper::ContentRect(HTHEME theme, HDC dc, int part, int state, const Rect& place) const {
    const RECT rect = ToSystem(place);
    RECT content = rect;
    const bool known =
        IsAvailable() && SUCCEEDED(m_getThemeBackgroundContentRect(theme, dc, part, state, &rect, &content));
    return known ? FromSystem(content) : place;
}

void CXThemeHelper::DrawLabel(HTHEME theme, HDC dc, int part, int state, const std::wstring& text,
                              UINT format, const Rect& place) const {
    const RECT rect = ToSystem(place);
    if (IsAvailable())
        m_drawThemeText(theme, dc, part, state, text.c_str(), static_cast<int>(text.size()), format, 0,
                        &rect);
}
