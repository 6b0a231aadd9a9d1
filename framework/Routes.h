// Typed route tables: one row an event, naming the control, the notification and the handler.
#pragma once

#include <windows.h>

#include <functional>
#include <type_traits>

#include "MessageCrackers.h"

class CDialog;

inline constexpr UINT kAnyControl = 0xFFFFFFFF;

struct CRoute {
    UINT message = 0;
    UINT code = 0;          // of a command or a notification
    UINT id = kAnyControl;  // of its control
    Answer (*invoke)(CDialog&, WPARAM, LPARAM) = nullptr;

    constexpr bool Serves(UINT aMessage, UINT aCode, UINT anId) const {
        return message == aMessage && code == aCode && (id == kAnyControl || id == anId);
    }
};

/// Makes the rows of TDialog's table. A handler is a member of the dialog, or of a view that the dialog hands
/// out through `template <class TView> TView& View()`.
template <typename TDialog>
class CRoutesOf {
  public:
    template <UINT Message, auto Handler>
    static constexpr CRoute OnMessage() {
        return {Message, 0, kAnyControl, [](CDialog& dialog, WPARAM wParam, LPARAM lParam) {
                    return crackers::Call(crackers::Of<Message>(), Bind<Handler>(dialog), wParam, lParam);
                }};
    }

    /// handler()
    template <UINT Code, auto Handler>
    static constexpr CRoute OnCommand(UINT id) {
        return {WM_COMMAND, Code, id, [](CDialog& dialog, WPARAM, LPARAM) {
                    Bind<Handler>(dialog)();
                    return Answer(0);
                }};
    }

    template <UINT Code, auto Handler>
    static constexpr CRoute OnNotify(UINT id = kAnyControl) {
        return {WM_NOTIFY, Code, id, [](CDialog& dialog, WPARAM, LPARAM lParam) {
                    return crackers::CallNotification<Code>(Bind<Handler>(dialog), lParam);
                }};
    }

  private:
    template <typename TResult, typename TReceiver, typename... TArguments>
    static TReceiver ReceiverOf(TResult (TReceiver::*)(TArguments...));
    template <typename TResult, typename TReceiver, typename... TArguments>
    static TReceiver ReceiverOf(TResult (TReceiver::*)(TArguments...) const);

    template <auto Handler>
    static auto Bind(CDialog& anyDialog) {
        using TReceiver = decltype(ReceiverOf(Handler));
        auto& dialog = static_cast<TDialog&>(anyDialog);
        if constexpr (std::is_base_of_v<TReceiver, TDialog>) {
            return std::bind_front(Handler, &dialog);
        } else {
            return std::bind_front(Handler, &dialog.template View<TReceiver>());
        }
    }
};
