#include "ThemeHelper.h"

#include "Window.h"

namespace {

template <typename TFunction>
bool Find(HMODULE library, const char* name, TFunction& function) {
    // By way of void*, because the compiler warns of a direct cast between two function types.
    function = reinterpret_cast<TFunction>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
    return function != nullptr;
}

}  // namespace

const CXThemeHelper& CXThemeHelper::Instance() {
    static const CXThemeHelper instance;
    return instance;
}

CXThemeHelper::CXThemeHelper(const wchar_t* library)
    : m_library(::LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {
    const HMODULE module = m_library.Get();
    const bool complete = module && Find(module, "CloseThemeData", m_closeThemeData) &&
                          Find(module, "DrawThemeBackground", m_drawThemeBackground) &&
                          Find(module, "DrawThemeText", m_drawThemeText) &&
                          Find(module, "GetThemeBackgroundContentRect", m_getThemeBackgroundContentRect) &&
                          Find(module, "IsAppThemed", m_isAppThemed) &&
                          Find(module, "IsThemeActive", m_isThemeActive) &&
                          Find(module, "OpenThemeData", m_openThemeData);
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
