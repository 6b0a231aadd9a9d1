#include "DialogHelp.h"

namespace {

IDialogHelp* g_help = nullptr;

DWORD HelpContextOf(HWND window) {
    for (HWND w = window; w; w = ::GetParent(w)) {
        if (const DWORD context = ::GetWindowContextHelpId(w)) return context;
    }
    return 0;
}

}  // namespace

void SetDialogHelp(IDialogHelp* help) { g_help = help; }

void ShowHelpOn(HWND window) {
    if (g_help) g_help->ShowHelp(HelpContextOf(window));
}

void AnswerHelpKey(const HELPINFO& asked, HWND dialog) {
    ShowHelpOn(asked.iContextType == HELPINFO_WINDOW ? static_cast<HWND>(asked.hItemHandle) : dialog);
}

bool HelpTakesMessage(MSG& message) { return g_help && g_help->TakesMessage(message); }
