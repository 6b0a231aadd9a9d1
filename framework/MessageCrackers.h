// The one place where messages are taken apart: what each message carries, and what its answer means.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <windowsx.h>

#include <optional>
#include <type_traits>

#include "Geometry.h"

/// The answer to a message; nothing lets the default handling run.
using Answer = std::optional<LRESULT>;

namespace crackers {

/// Only the messages below can stand in a route table.
template <UINT Message>
struct Cracker;

/// handler(UINT command) -> bool: handled
template <>
struct Cracker<WM_SYSCOMMAND> {
    static Answer Call(auto&& handler, WPARAM wParam, LPARAM) {
        // The system keeps the low four bits for itself.
        return handler(static_cast<UINT>(wParam & 0xFFF0)) ? Answer(0) : std::nullopt;
    }
};

/// handler() -> bool: painted
template <>
struct Cracker<WM_PAINT> {
    static Answer Call(auto&& handler, WPARAM, LPARAM) { return handler() ? Answer(0) : std::nullopt; }
};

/// handler() -> HICON
template <>
struct Cracker<WM_QUERYDRAGICON> {
    static Answer Call(auto&& handler, WPARAM, LPARAM) { return reinterpret_cast<LRESULT>(handler()); }
};

/// handler()
template <>
struct Cracker<WM_DESTROY> {
    static Answer Call(auto&& handler, WPARAM, LPARAM) {
        handler();
        return std::nullopt;
    }
};

/// handler(POINT client)
template <>
struct Cracker<WM_MOUSEMOVE> {
    static Answer Call(auto&& handler, WPARAM, LPARAM lParam) {
        handler(POINT{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        return std::nullopt;
    }
};
template <>
struct Cracker<WM_LBUTTONUP> : Cracker<WM_MOUSEMOVE> {};

/// handler(): somebody else has the mouse now
template <>
struct Cracker<WM_CAPTURECHANGED> : Cracker<WM_DESTROY> {};

/// handler(): what was put off until the controls are done with the message that caused it
inline constexpr UINT kPutOff = WM_APP;
template <>
struct Cracker<kPutOff> : Cracker<WM_DESTROY> {};

/// handler(UINT virtualKey, HWND list) -> int: -2 handled whole, -1 default action, else the row to act on
template <>
struct Cracker<WM_VKEYTOITEM> {
    static Answer Call(auto&& handler, WPARAM wParam, LPARAM lParam) {
        return static_cast<LRESULT>(handler(LOWORD(wParam), reinterpret_cast<HWND>(lParam)));
    }
};

/// handler(Size client)
template <>
struct Cracker<WM_SIZE> {
    static Answer Call(auto&& handler, WPARAM, LPARAM lParam) {
        handler(Size{LOWORD(lParam), HIWORD(lParam)});
        return std::nullopt;
    }
};

/// handler(UINT edge, RECT& proposed)
template <>
struct Cracker<WM_SIZING> {
    static Answer Call(auto&& handler, WPARAM wParam, LPARAM lParam) {
        handler(static_cast<UINT>(wParam), *reinterpret_cast<RECT*>(lParam));
        return TRUE;
    }
};

/// handler(const DRAWITEMSTRUCT& item) -> bool: drawn
template <>
struct Cracker<WM_DRAWITEM> {
    static Answer Call(auto&& handler, WPARAM, LPARAM lParam) {
        return handler(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)) ? Answer(TRUE) : std::nullopt;
    }
};

/// handler(UINT_PTR timer)
template <>
struct Cracker<WM_TIMER> {
    static Answer Call(auto&& handler, WPARAM wParam, LPARAM) {
        handler(static_cast<UINT_PTR>(wParam));
        return 0;
    }
};

/// What a notification code carries; a code that is not named here does not compile.
template <UINT Code>
struct Notification;
template <>
struct Notification<NM_CLICK> {
    using Type = const NMHDR;
};
template <>
struct Notification<NM_RCLICK> : Notification<NM_CLICK> {};
template <>
struct Notification<NM_DBLCLK> : Notification<NM_CLICK> {};
template <>
struct Notification<TVN_SELCHANGEDW> {
    using Type = const NMTREEVIEWW;
};
template <>
struct Notification<TVN_DELETEITEMW> : Notification<TVN_SELCHANGEDW> {};
template <>
struct Notification<TVN_BEGINDRAGW> : Notification<TVN_SELCHANGEDW> {};
template <>
struct Notification<TVN_BEGINLABELEDITW> {
    using Type = const NMTVDISPINFOW;
};
template <>
struct Notification<TVN_ENDLABELEDITW> : Notification<TVN_BEGINLABELEDITW> {};
template <>
struct Notification<TVN_KEYDOWN> {
    using Type = const NMTVKEYDOWN;
};
/// A tree view's; other controls' must be told apart by the row's id.
template <>
struct Notification<NM_CUSTOMDRAW> {
    using Type = NMTVCUSTOMDRAW;
};
template <>
struct Notification<TTN_GETDISPINFOW> {
    using Type = NMTTDISPINFOW;
};

/// handler(Notification&), or handler(); its result, if it gives one, is the notification's answer.
template <UINT Code>
Answer CallNotification(auto&& handler, LPARAM lParam) {
    auto& notification = *reinterpret_cast<typename Notification<Code>::Type*>(lParam);
    if constexpr (requires { handler(); }) {
        handler();
    } else if constexpr (std::is_void_v<decltype(handler(notification))>) {
        handler(notification);
    } else {
        return static_cast<LRESULT>(handler(notification));
    }
    return 0;
}

}  // namespace crackers
