#include "FileDialog.h"

#include <cderr.h>
#include <dlgs.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "DialogHelp.h"
#include "Resources.h"

namespace {

/// Long paths are possible where the user switched them on.
constexpr std::size_t kMaxPathCharacters = 32768;

constexpr UINT_PTR kNameTimer = 1;
constexpr UINT kTypingPause = 250;  // ms

/// The dialog wants a template from memory, so that the language is ours to choose.
UniqueGlobal CopyOfTemplate(UINT id) {
    const auto bytes = LoadResourceBytes(RT_DIALOG, id);
    UniqueGlobal copy(bytes.empty() ? nullptr : ::GlobalAlloc(GPTR, bytes.size()));
    if (copy) std::memcpy(copy.Get(), bytes.data(), bytes.size());
    return copy;
}

}  // namespace

std::optional<std::wstring> CFileDialog::Run(HWND owner, BOOL(WINAPI* show)(OPENFILENAMEW*)) {
    const CFocusKeeper focus;
    std::vector<wchar_t> path(kMaxPathCharacters, L'\0');
    m_settings.proposedName.copy(path.data(), path.size() - 1);
    // One pair of text and pattern, each ended by a zero; the list ends with one more.
    const std::wstring filter =
        m_settings.filterText + L'\0' + L"*." + m_settings.defaultExtension + L'\0' + L'\0';
    const UniqueGlobal addedTemplate = CopyOfTemplate(m_settings.templateId);

    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.hInstance = static_cast<HINSTANCE>(addedTemplate.Get());
    dialog.lpstrFilter = filter.c_str();
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = static_cast<DWORD>(path.size());
    dialog.lpstrInitialDir = m_settings.initialFolder.empty() ? nullptr : m_settings.initialFolder.c_str();
    dialog.lpstrTitle = m_settings.title.c_str();
    dialog.lpstrDefExt = m_settings.defaultExtension.c_str();
    // The program's own folder stays current: relative names must not follow the user's last choice.
    dialog.Flags = m_settings.flags | OFN_EXPLORER | OFN_ENABLESIZING | OFN_NOCHANGEDIR;
    if (addedTemplate) {
        // Only then: with a hook the system shows the dialog of Windows XP.
        dialog.Flags |= OFN_ENABLETEMPLATEHANDLE | OFN_ENABLEHOOK;
        dialog.lCustData = reinterpret_cast<LPARAM>(this);
        dialog.lpfnHook = &CFileDialog::Hook;
    }
    BOOL confirmed = show(&dialog);
    if (!confirmed && ::CommDlgExtendedError() == FNERR_INVALIDFILENAME) {
        // The system does not open the dialog with a proposed name that is no valid file name.
        path.front() = L'\0';
        confirmed = show(&dialog);
    }
    if (!confirmed) return std::nullopt;
    return std::wstring(path.data());
}

std::wstring CFileDialog::Query(UINT message) const {
    const CWindow dialog(::GetParent(m_window.Handle()));
    const int needed = dialog.SendInt(message);
    if (needed <= 0) return {};
    std::wstring text(static_cast<std::size_t>(needed), L'\0');
    dialog.Send(message, text.size(), text.data());
    return text.c_str();
}

std::wstring CFileDialog::CurrentPath() const {
    const HWND dialog = ::GetParent(m_window.Handle());
    const HWND combo = ::GetDlgItem(dialog, cmb13);
    const std::wstring name = CWindow(combo ? combo : ::GetDlgItem(dialog, edt1)).Text();
    // A server whose name is half typed would be searched for in the network.
    const bool noFileYet = name.starts_with(L"\\\\") && std::ranges::count(name, L'\\') < 4;
    if (name.empty() || noFileYet) return {};
    // Some systems put the folder before a path even when a full one was typed.
    const bool isFull = name.starts_with(L"\\\\") || (name.size() > 2 && name[1] == L':');
    const std::wstring path = isFull ? name : Query(CDM_GETFILEPATH);
    std::vector<wchar_t> full(kMaxPathCharacters);
    return ::GetFullPathNameW(path.c_str(), kMaxPathCharacters, full.data(), nullptr) ? full.data()
                                                                                      : std::wstring();
}

UINT_PTR CALLBACK CFileDialog::Hook(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
        const auto& settings = *reinterpret_cast<const OPENFILENAMEW*>(lParam);
        ::SetWindowLongPtrW(window, DWLP_USER, settings.lCustData);
        auto& dialog = *reinterpret_cast<CFileDialog*>(settings.lCustData);
        dialog.m_window = CWindow(window);
        // The number is set on the system's dialog, so that its own controls lead to the same page.
        ::SetWindowContextHelpId(::GetParent(window), HelpOfDialog(dialog.m_settings.templateId));
        return FALSE;  // the focus stays in the file name
    }
    auto* dialog = reinterpret_cast<CFileDialog*>(::GetWindowLongPtrW(window, DWLP_USER));
    if (!dialog) return FALSE;
    const auto answer = Guarded([&] { return dialog->Handle(message, wParam, lParam); });
    if (answer) ::SetWindowLongPtrW(window, DWLP_MSGRESULT, *answer);
    return answer.has_value();
}

std::optional<LRESULT> CFileDialog::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_COMMAND) {
        OnCommand(LOWORD(wParam), HIWORD(wParam));
        return std::nullopt;
    }
    if (message == WM_TIMER && wParam == kNameTimer) {
        ::KillTimer(m_window.Handle(), kNameTimer);
        OnSelectionChange();
        return TRUE;
    }
    if (message == WM_HELP) {
        AnswerHelpKey(*reinterpret_cast<const HELPINFO*>(lParam), m_window.Handle());
        return TRUE;
    }
    if (message != WM_NOTIFY) return std::nullopt;
    switch (reinterpret_cast<const NMHDR*>(lParam)->code) {
        case CDN_INITDONE:
            m_nameWatch.Watch(m_window.Handle());
            OnInitDone();
            break;
        case CDN_FOLDERCHANGE:
            OnFolderChange();
            break;
        case CDN_SELCHANGE:
            OnSelectionChange();
            break;
        case CDN_FILEOK:
            if (!OnConfirmed(reinterpret_cast<const OFNOTIFYW*>(lParam)->lpOFN->lpstrFile)) return TRUE;
            break;
        default:
            break;
    }
    return std::nullopt;
}

bool CFileDialog::OnConfirmed(const wchar_t* path) {
    m_confirmed = path;
    if (m_confirmed.empty()) m_confirmed = CurrentPath();
    return OnFileOk();
}

void CFileDialog::CNameWatch::Watch(HWND window) {
    m_hookWindow = window;
    Attach(::GetParent(window));
}

Answer CFileDialog::CNameWatch::OnMessage(UINT message, WPARAM wParam, LPARAM /*lParam*/) {
    const UINT id = LOWORD(wParam);
    const UINT code = HIWORD(wParam);
    const bool typed = message == WM_COMMAND &&
                       ((id == cmb13 && code == CBN_EDITCHANGE) || (id == edt1 && code == EN_CHANGE));
    // After a pause, not for each letter: the handler may open the file.
    if (typed) ::SetTimer(m_hookWindow, kNameTimer, kTypingPause, nullptr);
    return std::nullopt;
}
