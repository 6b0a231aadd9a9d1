// The system's visual styles, through a library that is loaded at run time.
#pragma once

#include <windows.h>

#include <uxtheme.h>

#include <string>

#include "Geometry.h"
#include "Handles.h"

/// Available only when the library and every entry point of it were found; until then nothing is themed and
/// each call does nothing.
class CXThemeHelper {
  public:
    /// The program's own one, loaded with the first use.
    static const CXThemeHelper& Instance();

    /// A library of the system folder; never one from anywhere else.
    explicit CXThemeHelper(const wchar_t* library = L"UXTHEME.DLL");

    bool IsAvailable() const { return static_cast<bool>(m_library); }
    /// The user has styles switched on, and they apply to this program.
    bool IsThemed() const;
    /// Null when there is no such class, or no style is in force.
    HTHEME Open(HWND window, const wchar_t* themeClass) const;
    void Close(HTHEME theme) const;
    void DrawBackground(HTHEME theme, HDC dc, int part, int state, const Rect& place) const;
    /// The space that a background leaves for what it holds; `place` itself when that is not known.
    Rect ContentRect(HTHEME theme, HDC dc, int part, int state, const Rect& place) const;
    void DrawLabel(HTHEME theme, HDC dc, int part, int state, const std::wstring& text, UINT format,
                   const Rect& place) const;

  private:
    UniqueLibrary m_library;
    decltype(&::CloseThemeData) m_closeThemeData = nullptr;
    decltype(&::DrawThemeBackground) m_drawThemeBackground = nullptr;
    decltype(&::DrawThemeText) m_drawThemeText = nullptr;
    decltype(&::GetThemeBackgroundContentRect) m_getThemeBackgroundContentRect = nullptr;
    decltype(&::IsAppThemed) m_isAppThemed = nullptr;
    decltype(&::IsThemeActive) m_isThemeActive = nullptr;
    decltype(&::OpenThemeData) m_openThemeData = nullptr;
};
