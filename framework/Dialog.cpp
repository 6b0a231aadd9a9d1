#include "Dialog.h"

#include "DialogHelp.h"
#include "Resources.h"
#include "Scope.h"

namespace {

/// The dialog procedure's answer to these is the message's answer itself; for all others it only says
/// "handled".
constexpr bool AnswersDirectly(UINT message) {
    return message == WM_INITDIALOG || message == WM_VKEYTOITEM || message == WM_CHARTOITEM ||
           message == WM_COMPAREITEM || message == WM_QUERYDRAGICON ||
           (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC);
}

/// To a key in a list box 0 would mean that the list is to act on its first row.
constexpr INT_PTR AnswerWhenUnhandled(UINT message) {
    return message == WM_VKEYTOITEM || message == WM_CHARTOITEM ? crackers::kKeyDefault : FALSE;
}

/// The loop waits for a posted message, and its dialog may have ended while a sent one was handled.
void WakeLoop() { ::PostThreadMessageW(::GetCurrentThreadId(), WM_NULL, 0, 0); }

}  // namespace

CDialog::~CDialog() {
    if (m_hwnd) ::DestroyWindow(m_hwnd);
}

bool CDialog::CreateModeless(HWND owner) {
    const DLGTEMPLATE* dialogTemplate = LoadDialogTemplate(m_templateId);
    if (!dialogTemplate) return false;
    ::CreateDialogIndirectParamW(::GetModuleHandleW(nullptr), dialogTemplate, owner, &CDialog::Procedure,
                                 reinterpret_cast<LPARAM>(this));
    return m_hwnd != nullptr;
}

INT_PTR CDialog::RunModal(HWND owner) {
    const CFocusKeeper focus;
    m_modal = true;
    m_ended = false;
    m_result = -1;
    {
        const CWindow outermost(::GetAncestor(owner, GA_ROOT));
        const bool disables = outermost.IsEnabled();
        const CScopeExit enableAgain([&] {
            if (disables) outermost.Enable();
        });
        if (disables) outermost.Enable(false);
        if (!CreateModeless(owner)) return m_result;
        if (!m_ended) {
            ::ShowWindow(m_hwnd, SW_SHOW);
            RunLoop();
        }
    }
    // Only now, because the owner must be able to take the activation.
    if (m_hwnd) ::DestroyWindow(m_hwnd);
    return m_result;
}

void CDialog::RunLoop() {
    MSG message;
    while (!m_ended) {
        if (::GetMessageW(&message, nullptr, 0, 0) < 0 || EndsLoop(message)) return;
        if (HelpTakesMessage(message) || Translate(message)) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}

bool CDialog::Translate(MSG& message) {
    if (!m_hwnd) return false;
    const bool ours = message.hwnd == m_hwnd || ::IsChild(m_hwnd, message.hwnd);
    const bool swallowed = ours && Guarded([&] {
                               m_fullText.Relay(m_hwnd, message);
                               return PreTranslate(message);
                           });
    return swallowed || !m_hwnd || ::IsDialogMessageW(m_hwnd, &message);
}

void CDialog::EnableItem(int id, bool enabled, int focusTaker) const {
    const CWindow item = Item(id);
    // Mostly nothing changes, and the system takes longer to find that out.
    if (item.IsEnabled() == enabled) return;
    if (!enabled && item.HasFocus()) Send(WM_NEXTDLGCTL, Item(focusTaker).Handle(), TRUE);
    item.Enable(enabled);
}

void CDialog::End(INT_PTR result) {
    m_result = result;
    m_ended = true;
    if (m_modal) {
        WakeLoop();
    } else {
        ::DestroyWindow(m_hwnd);
    }
}

INT_PTR CALLBACK CDialog::Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
        reinterpret_cast<CDialog*>(lParam)->m_hwnd = hwnd;
        ::SetWindowLongPtrW(hwnd, DWLP_USER, lParam);
        ::SetWindowContextHelpId(hwnd, HelpOfDialog(reinterpret_cast<CDialog*>(lParam)->m_templateId));
    }
    auto* dialog = reinterpret_cast<CDialog*>(::GetWindowLongPtrW(hwnd, DWLP_USER));
    if (!dialog) return FALSE;
    const Answer answer = Guarded([&] { return dialog->Dispatch(message, wParam, lParam); });
    if (message == WM_NCDESTROY) {
        ::SetWindowLongPtrW(hwnd, DWLP_USER, 0);
        dialog->m_hwnd = nullptr;
        dialog->m_ended = true;
        WakeLoop();
    }
    if (!answer) return AnswerWhenUnhandled(message);
    if (AnswersDirectly(message)) return static_cast<INT_PTR>(*answer);
    ::SetWindowLongPtrW(hwnd, DWLP_MSGRESULT, static_cast<LONG_PTR>(*answer));
    return TRUE;
}

Answer CDialog::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) return OnInitDialog();
    if (message == WM_NOTIFY) {
        const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
        return DispatchRoutes(message, header.code, static_cast<UINT>(header.idFrom), wParam, lParam);
    }
    if (message == WM_HELP) {
        // Served here, because a docked dialog's owner belongs to another program.
        AnswerHelpKey(*reinterpret_cast<const HELPINFO*>(lParam), m_hwnd);
        return TRUE;
    }
    if (message != WM_COMMAND) return DispatchRoutes(message, 0, kAnyControl, wParam, lParam);

    // The user can't work a disabled dialog, but another program's message, or the close key, still arrives.
    // Under a docked dialog it is the host's window that a message box disables.
    if (m_working || !IsEnabled() || !::IsWindowEnabled(::GetAncestor(m_hwnd, GA_ROOT))) return 0;
    const UINT id = LOWORD(wParam);
    const UINT code = HIWORD(wParam);
    if (const Answer answer = DispatchRoutes(message, code, id, wParam, lParam)) return answer;
    if (code != BN_CLICKED || (id != IDOK && id != IDCANCEL)) return std::nullopt;
    id == IDOK ? OnOK() : OnCancel();
    return 0;
}

Answer CDialog::DispatchRoutes(UINT message, UINT code, UINT id, WPARAM wParam, LPARAM lParam) {
    for (const CRoute& route : Routes()) {
        if (!route.Serves(message, code, id)) continue;
        if (const Answer answer = route.invoke(*this, wParam, lParam)) return answer;
    }
    return std::nullopt;
}
