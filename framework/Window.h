// A window handle with verbs. Not an owner: the system's windows end with their dialog.
#pragma once

#include <windows.h>

#include <string>
#include <type_traits>

#include "Geometry.h"

constexpr RECT ToSystem(const Rect& r) { return {r.left, r.top, r.right, r.bottom}; }
constexpr Rect FromSystem(const RECT& r) { return {r.left, r.top, r.right, r.bottom}; }

class CWindow {
  public:
    CWindow() = default;
    explicit CWindow(HWND hwnd) : m_hwnd(hwnd) {}

    HWND Handle() const { return m_hwnd; }
    bool IsLive() const { return ::IsWindow(m_hwnd) != FALSE; }

    std::wstring Text() const;
    void SetText(const std::wstring& text) const { ::SetWindowTextW(m_hwnd, text.c_str()); }
    void Enable(bool enabled = true) const { ::EnableWindow(m_hwnd, enabled); }
    bool IsEnabled() const { return ::IsWindowEnabled(m_hwnd) != FALSE; }
    void Show(bool shown = true) const { ::ShowWindow(m_hwnd, shown ? SW_SHOW : SW_HIDE); }
    bool HasFocus() const { return ::GetFocus() == m_hwnd; }
    void Focus() const { ::SetFocus(m_hwnd); }

    Rect WindowRect() const;
    Rect ClientRect() const;
    /// The window's rectangle in the client coordinates of `ancestor`.
    Rect RectIn(HWND ancestor) const;

    /// A control in this window, and the same as a view of its type.
    CWindow Item(int id) const { return Control<CWindow>(id); }
    template <typename TControl>
    TControl Control(int id) const {
        return TControl(::GetDlgItem(m_hwnd, id));
    }

    LONG_PTR Style() const { return ::GetWindowLongPtrW(m_hwnd, GWL_STYLE); }
    /// The font that the control draws its text with.
    HFONT Font() const { return reinterpret_cast<HFONT>(Send(WM_GETFONT)); }

    /// Parameters are numbers, or handles and pointers as they are.
    template <typename TW = WPARAM, typename TL = LPARAM>
    LRESULT Send(UINT message, TW wParam = {}, TL lParam = {}) const {
        return ::SendMessageW(m_hwnd, message, Parameter<WPARAM>(wParam), Parameter<LPARAM>(lParam));
    }
    template <typename TW = WPARAM, typename TL = LPARAM>
    int SendInt(UINT message, TW wParam = {}, TL lParam = {}) const {
        return static_cast<int>(Send(message, wParam, lParam));
    }
    int SendText(UINT message, WPARAM wParam, const std::wstring& text) const {
        return SendInt(message, wParam, text.c_str());
    }

  protected:
    HWND m_hwnd = nullptr;

  private:
    template <typename TParameter, typename TValue>
    static TParameter Parameter(TValue value) {
        if constexpr (std::is_pointer_v<TValue>) {
            return reinterpret_cast<TParameter>(value);
        } else {
            return static_cast<TParameter>(value);
        }
    }
};

/// Keeps a control from painting while it is filled, and paints it whole at the end.
class CRedrawLock {
  public:
    explicit CRedrawLock(const CWindow& window) : m_window(window.Handle()) {
        m_window.Send(WM_SETREDRAW, FALSE);
    }
    ~CRedrawLock() {
        m_window.Send(WM_SETREDRAW, TRUE);
        ::InvalidateRect(m_window.Handle(), nullptr, TRUE);
    }
    CRedrawLock(const CRedrawLock&) = delete;
    CRedrawLock& operator=(const CRedrawLock&) = delete;

  private:
    CWindow m_window;
};

class CWaitCursor {
  public:
    CWaitCursor() : m_previous(::SetCursor(::LoadCursorW(nullptr, IDC_WAIT))) {}
    ~CWaitCursor() { ::SetCursor(m_previous); }
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;

  private:
    HCURSOR m_previous;
};

/// The drawing surface of a window's client area.
class CClientDC {
  public:
    explicit CClientDC(const CWindow& window) : m_hwnd(window.Handle()), m_dc(::GetDC(m_hwnd)) {}
    ~CClientDC() { ::ReleaseDC(m_hwnd, m_dc); }
    CClientDC(const CClientDC&) = delete;
    CClientDC& operator=(const CClientDC&) = delete;
    HDC Get() const { return m_dc; }

  private:
    HWND m_hwnd;
    HDC m_dc;
};

/// Gives the focus back at its end to the control that had it, or to what lies around it when the control is
/// gone or disabled by then. After a dialog the system activates the outermost window around the owner: when
/// that is another program's, it takes the focus for itself.
class CFocusKeeper {
  public:
    CFocusKeeper() : m_focus(::GetFocus()), m_around(::GetParent(m_focus.Handle())) {}
    ~CFocusKeeper() {
        if (m_focus.IsEnabled()) {
            m_focus.Focus();
        } else if (m_around.IsEnabled()) {
            m_around.Focus();
        }
    }
    CFocusKeeper(const CFocusKeeper&) = delete;
    CFocusKeeper& operator=(const CFocusKeeper&) = delete;

  private:
    CWindow m_focus;
    CWindow m_around;
};

/// Selects a font or a bitmap into a drawing surface, and the old one again at the end.
class CSelectedObject {
  public:
    CSelectedObject(HDC dc, HGDIOBJ object) : m_dc(dc), m_previous(::SelectObject(dc, object)) {}
    ~CSelectedObject() { ::SelectObject(m_dc, m_previous); }
    CSelectedObject(const CSelectedObject&) = delete;
    CSelectedObject& operator=(const CSelectedObject&) = delete;

  private:
    HDC m_dc;
    HGDIOBJ m_previous;
};

/// How large the surface draws the text in one line.
Size TextExtent(HDC dc, const std::wstring& text);

/// The exception barrier of what the system calls: an exception ends `work`, never the program. Gives the
/// result of `work`, an empty one when it failed.
template <typename TWork>
auto Guarded(TWork&& work) noexcept -> decltype(work()) {
    try {
        return work();
    } catch (...) {
        ::OutputDebugStringW(L"A handler failed.\n");
        return {};
    }
}

/// Whether the message ends a message loop, because the thread is asked to quit. It is posted again then, for
/// the loops around this one.
bool EndsLoop(const MSG& message);

/// Shows a message box; returns the button's id. `flags` are MB_...
inline int ShowMessage(HWND owner, const std::wstring& text, const std::wstring& caption, UINT flags) {
    const CFocusKeeper focus;
    return ::MessageBoxW(owner, text.c_str(), caption.c_str(), flags);
}

/// Moves many child windows in one batch, keeping Z order and activation.
class CGeometryBatch {
  public:
    explicit CGeometryBatch(int expectedWindows) : m_batch(::BeginDeferWindowPos(expectedWindows)) {}
    ~CGeometryBatch() {
        if (m_batch) ::EndDeferWindowPos(m_batch);
    }
    CGeometryBatch(const CGeometryBatch&) = delete;
    CGeometryBatch& operator=(const CGeometryBatch&) = delete;

    /// `place` is in the client coordinates of the window's parent.
    void Move(HWND window, const Rect& place);

  private:
    HDWP m_batch;
};
