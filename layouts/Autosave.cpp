#include "Autosave.h"

#include <utility>

namespace {

constexpr UINT_PTR kTimer = 2;
constexpr UINT kMinute = 60'000;  // ms
/// More programs than anybody runs at once, and more crashes than anybody has without an answer.
constexpr int kMostCopies = 20;

/// Nothing when another program holds it.
UniqueFile Lock(const std::wstring& path) {
    return UniqueFile(::CreateFileW(path.c_str(), GENERIC_WRITE | DELETE, /*shared*/ 0, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
}

}  // namespace

CAutosave::CAutosave(const CDialog& dialog, std::wstring folder,
                     std::function<bool(const std::wstring&)> write)
    : m_dialog(dialog), m_folder(std::move(folder)), m_write(std::move(write)) {}

std::wstring CAutosave::NameOf(int number, const wchar_t* extension) const {
    const std::wstring suffix = number == 1 ? L"" : L" (" + std::to_wstring(number) + L")";
    return m_folder + L"\\unsaved" + suffix + extension;
}

void CAutosave::OnModified(bool modified) {
    if (!modified) return Remove();
    m_changed = true;
    if (!m_waits && m_dialog.IsLive()) m_waits = ::SetTimer(m_dialog.Handle(), kTimer, kMinute, nullptr) != 0;
}

bool CAutosave::OnTimer(UINT_PTR timer) {
    if (timer != kTimer) return false;
    if (!m_changed) {
        StopTimer();
    } else if (TakeFree() && m_write(m_path)) {
        m_written = true;
        m_changed = false;
    }
    return true;
}

void CAutosave::StopTimer() {
    if (std::exchange(m_waits, false)) ::KillTimer(m_dialog.Handle(), kTimer);
}

/// One that a crash left behind keeps its name until the user was asked about it.
bool CAutosave::TakeFree() {
    if (m_folder.empty()) return false;
    MakeFolders(m_folder);
    for (int number = 1; !m_lock && number <= kMostCopies; ++number) {
        m_path = NameOf(number, L".pgl");
        m_lock = Lock(NameOf(number, L".lock"));
        if (IsThere(m_path)) m_lock.Reset();
    }
    return static_cast<bool>(m_lock);
}

std::optional<std::wstring> CAutosave::TakeLeft() {
    if (m_lock || m_folder.empty()) return std::nullopt;
    while (m_lastAsked < kMostCopies) {
        m_path = NameOf(++m_lastAsked, L".pgl");
        if (!IsThere(m_path)) continue;
        m_lock = Lock(NameOf(m_lastAsked, L".lock"));
        // Its owner may have removed it just now.
        if (m_lock && IsThere(m_path)) return m_path;
        m_lock.Reset();
    }
    return std::nullopt;
}

void CAutosave::Remove() {
    StopTimer();
    m_changed = false;
    if (!std::exchange(m_written, false)) return;
    CPatience patience;
    DeleteHeldFile(m_path, patience);
    m_lock.Reset();
}
