// What each routed message carries, and what its answer means.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <windowsx.h>

#include <optional>
#include <type_traits>

#include "DroppedFiles.h"
#include "Geometry.h"

/// The answer to a message; nothing lets the default handling run.
using Answer = std::optional<LRESULT>;

namespace crackers {

/// A message, or a notification code, as a type. Only those that a function below takes can stand in a route
/// table.
template <UINT Number>
using Of = std::integral_constant<UINT, Number>;

/// Work deferred until the controls have finished with the message that caused it.
inline constexpr UINT kDeferred = WM_APP;

/// handler(UINT command) -> bool: handled
Answer Call(Of<WM_SYSCOMMAND>, auto&& handler, WPARAM wParam, LPARAM) {
    // The system keeps the low four bits for itself.
    return handler(static_cast<UINT>(wParam & 0xFFF0)) ? Answer(0) : std::nullopt;
}

/// handler(wchar_t character) -> bool: handled
Answer Call(Of<WM_SYSCHAR>, auto&& handler, WPARAM wParam, LPARAM) {
    return handler(static_cast<wchar_t>(wParam)) ? Answer(0) : std::nullopt;
}

/// handler(HWND window, POINT screen) -> bool: handled. From the keyboard the place is -1, -1.
Answer Call(Of<WM_CONTEXTMENU>, auto&& handler, WPARAM wParam, LPARAM lParam) {
    const POINT screen{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    return handler(reinterpret_cast<HWND>(wParam), screen) ? Answer(0) : std::nullopt;
}

/// handler() -> bool: painted
Answer Call(Of<WM_PAINT>, auto&& handler, WPARAM, LPARAM) { return handler() ? Answer(0) : std::nullopt; }

/// handler() -> HICON
Answer Call(Of<WM_QUERYDRAGICON>, auto&& handler, WPARAM, LPARAM) {
    return reinterpret_cast<LRESULT>(handler());
}

/// handler(), for messages whose parameters nobody needs
Answer CallPlain(auto&& handler) {
    handler();
    return std::nullopt;
}
Answer Call(Of<WM_DESTROY>, auto&& handler, WPARAM, LPARAM) { return CallPlain(handler); }
Answer Call(Of<WM_CAPTURECHANGED>, auto&& handler, WPARAM, LPARAM) { return CallPlain(handler); }
Answer Call(Of<kDeferred>, auto&& handler, WPARAM, LPARAM) { return CallPlain(handler); }
Answer Call(Of<WM_DPICHANGED_AFTERPARENT>, auto&& handler, WPARAM, LPARAM) { return CallPlain(handler); }
Answer Call(Of<WM_SYSCOLORCHANGE>, auto&& handler, WPARAM, LPARAM) { return CallPlain(handler); }
Answer Call(Of<WM_THEMECHANGED>, auto&& handler, WPARAM, LPARAM) { return CallPlain(handler); }
Answer Call(Of<WM_SETTINGCHANGE>, auto&& handler, WPARAM, LPARAM) { return CallPlain(handler); }

/// handler(POINT client)
Answer CallAt(auto&& handler, LPARAM lParam) {
    handler(POINT{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
    return std::nullopt;
}
Answer Call(Of<WM_MOUSEMOVE>, auto&& handler, WPARAM, LPARAM lParam) { return CallAt(handler, lParam); }
Answer Call(Of<WM_LBUTTONUP>, auto&& handler, WPARAM, LPARAM lParam) { return CallAt(handler, lParam); }
Answer Call(Of<WM_RBUTTONDOWN>, auto&& handler, WPARAM, LPARAM) { return CallPlain(handler); }

/// Answers to a key in a list box: nothing more to do, or what the list does by itself.
inline constexpr int kKeyHandled = -2;
inline constexpr int kKeyDefault = -1;

/// handler(UINT virtualKey, HWND list) -> int: one of these, or the row to act on
Answer Call(Of<WM_VKEYTOITEM>, auto&& handler, WPARAM wParam, LPARAM lParam) {
    return static_cast<LRESULT>(handler(LOWORD(wParam), reinterpret_cast<HWND>(lParam)));
}

/// handler(Size client)
Answer Call(Of<WM_SIZE>, auto&& handler, WPARAM, LPARAM lParam) {
    handler(Size{LOWORD(lParam), HIWORD(lParam)});
    return std::nullopt;
}

/// handler() -> bool: the session may end
Answer Call(Of<WM_QUERYENDSESSION>, auto&& handler, WPARAM, LPARAM) {
    return static_cast<LRESULT>(handler());
}

/// handler(bool ends): what became of the session
Answer Call(Of<WM_ENDSESSION>, auto&& handler, WPARAM wParam, LPARAM) {
    handler(wParam != FALSE);
    return 0;
}

/// handler(UINT edge, RECT& proposed)
Answer Call(Of<WM_SIZING>, auto&& handler, WPARAM wParam, LPARAM lParam) {
    handler(static_cast<UINT>(wParam), *reinterpret_cast<RECT*>(lParam));
    return TRUE;
}

/// handler(MINMAXINFO& sizes)
Answer Call(Of<WM_GETMINMAXINFO>, auto&& handler, WPARAM, LPARAM lParam) {
    handler(*reinterpret_cast<MINMAXINFO*>(lParam));
    return 0;
}

/// handler(UINT dpi, const RECT& place): what the system proposes for the window at the new scale
Answer Call(Of<WM_DPICHANGED>, auto&& handler, WPARAM wParam, LPARAM lParam) {
    handler(UINT{HIWORD(wParam)}, *reinterpret_cast<const RECT*>(lParam));
    return 0;
}

/// handler(UINT dpi, SIZE& window): the size that the window wants at that scale
Answer Call(Of<WM_GETDPISCALEDSIZE>, auto&& handler, WPARAM wParam, LPARAM lParam) {
    handler(static_cast<UINT>(wParam), *reinterpret_cast<SIZE*>(lParam));
    return TRUE;
}

/// handler(const DRAWITEMSTRUCT& item) -> bool: drawn
Answer Call(Of<WM_DRAWITEM>, auto&& handler, WPARAM, LPARAM lParam) {
    return handler(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)) ? Answer(TRUE) : std::nullopt;
}

/// handler(const CDroppedFiles& files)
Answer Call(Of<WM_DROPFILES>, auto&& handler, WPARAM wParam, LPARAM) {
    handler(CDroppedFiles(reinterpret_cast<HDROP>(wParam)));
    return 0;
}

/// handler(UINT_PTR timer)
Answer Call(Of<WM_TIMER>, auto&& handler, WPARAM wParam, LPARAM) {
    handler(static_cast<UINT_PTR>(wParam));
    return 0;
}

// The record that comes with each notification code: declared for its type, never called.
const NMHDR& RecordOf(Of<NM_CLICK>);
const NMHDR& RecordOf(Of<NM_RETURN>);
const NMHDR& RecordOf(Of<NM_RCLICK>);
const NMHDR& RecordOf(Of<NM_DBLCLK>);
const NMTREEVIEWW& RecordOf(Of<TVN_SELCHANGEDW>);
const NMTREEVIEWW& RecordOf(Of<TVN_DELETEITEMW>);
const NMTREEVIEWW& RecordOf(Of<TVN_BEGINDRAGW>);
const NMTREEVIEWW& RecordOf(Of<TVN_ITEMEXPANDEDW>);
const NMTVDISPINFOW& RecordOf(Of<TVN_BEGINLABELEDITW>);
const NMTVDISPINFOW& RecordOf(Of<TVN_ENDLABELEDITW>);
const NMTVKEYDOWN& RecordOf(Of<TVN_KEYDOWN>);
NMTVCUSTOMDRAW& RecordOf(Of<NM_CUSTOMDRAW>);  // a tree view's: the row's id must tell it from other controls'
const NMLISTVIEW& RecordOf(Of<LVN_COLUMNCLICK>);
const NMLISTVIEW& RecordOf(Of<LVN_ITEMCHANGING>);
const NMLISTVIEW& RecordOf(Of<LVN_ITEMCHANGED>);
NMTTDISPINFOW& RecordOf(Of<TTN_GETDISPINFOW>);

/// handler(record), or handler(); its result, if it gives one, is the notification's answer.
template <UINT Code>
Answer CallNotification(auto&& handler, LPARAM lParam) {
    using TRecord = std::remove_reference_t<decltype(RecordOf(Of<Code>()))>;
    auto& record = *reinterpret_cast<TRecord*>(lParam);
    const auto call = [&] {
        if constexpr (requires { handler(); }) {
            return handler();
        } else {
            return handler(record);
        }
    };
    if constexpr (std::is_void_v<decltype(call())>) {
        call();
        return 0;
    } else {
        return static_cast<LRESULT>(call());
    }
}

}  // namespace crackers
