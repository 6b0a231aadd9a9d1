// A control whose messages one of our classes sees first.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "MessageCrackers.h"
#include "Window.h"

/// TControl is the typed view that the class extends. The extension ends with the object or with the window,
/// whichever goes first.
template <typename TControl>
class CSubclassedControl : public TControl {
  public:
    CSubclassedControl() = default;
    virtual ~CSubclassedControl() { Detach(); }
    CSubclassedControl(const CSubclassedControl&) = delete;
    CSubclassedControl& operator=(const CSubclassedControl&) = delete;

    /// Takes over the window, which must have no extension of this kind yet.
    void Attach(HWND hwnd) {
        Detach();
        if (::SetWindowSubclass(hwnd, &Procedure, 0, reinterpret_cast<DWORD_PTR>(this))) this->m_hwnd = hwnd;
    }
    void Detach() {
        if (this->m_hwnd) ::RemoveWindowSubclass(this->m_hwnd, &Procedure, 0);
        this->m_hwnd = nullptr;
    }

  protected:
    /// Nothing lets the control's own handling run.
    virtual Answer OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
    LRESULT Default(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::DefSubclassProc(this->m_hwnd, message, wParam, lParam);
    }

  private:
    static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                      DWORD_PTR self) noexcept {
        auto& control = *reinterpret_cast<CSubclassedControl*>(self);
        if (message == WM_NCDESTROY) {
            control.Detach();
            return ::DefSubclassProc(hwnd, message, wParam, lParam);
        }
        const Answer answer = Guarded([&] { return control.OnMessage(message, wParam, lParam); });
        return answer ? *answer : ::DefSubclassProc(hwnd, message, wParam, lParam);
    }
};
