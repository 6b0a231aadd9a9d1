#include "Closing.h"

#include <array>
#include <string_view>
#include <utility>

namespace {

BOOL CALLBACK CancelDialog(HWND window, LPARAM) {
    std::array<wchar_t, 8> name{};
    ::GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    if (name.data() == std::wstring_view(L"#32770")) ::PostMessageW(window, WM_CLOSE, 0, 0);
    return TRUE;
}

}  // namespace

bool CClosing::OnQueryEndSession() {
    // A disabled dialog has a question open already.
    return m_dialog.IsEnabled() && !m_dialog.IsWorking() ? MayClose() : !m_tree.Layout().IsModified();
}

void CClosing::OnEndSession(bool ends) {
    // An ended session destroys no window; in one that goes on, another program said no.
    if (!ends) return OnStays();
    m_files.DropUnasked();
    m_size.StorePlace();
}

void CClosing::OnStays() {
    // The discarded layout is still there.
    if (std::exchange(m_discarded, false)) m_tree.Layout().SetModified(true);
}

bool CClosing::MayClose() {
    m_tree.CancelDrag();
    switch (m_files.AskToSave(MB_YESNOCANCEL)) {
        case IDYES:
            // Still modified: the save failed, and the tree holds the only copy.
            return !m_tree.Layout().IsModified();
        case IDNO:
            if (!m_files.MayBeDropped(m_files.KeepUnsaved())) return false;
            m_discarded = m_discarded || m_tree.Layout().IsModified();
            m_tree.Layout().SetModified(false);  // so that nothing asks again
            return true;
        default:
            return false;
    }
}

void CClosing::OnDestroy() const {
    m_size.StorePlace();
    // Still modified here: the host takes the window away, and there is no way back.
    if (m_host.WasGiven()) m_files.AskToSave(MB_YESNO);
    m_files.DropUnasked();
    // Lists and questions belong to the host's window, which is another program's: the system leaves them
    // behind.
    if (m_host.WasGiven()) ::EnumThreadWindows(::GetCurrentThreadId(), &CancelDialog, 0);
}
