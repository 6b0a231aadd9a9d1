#include "support/Popups.h"

#include <gtest/gtest.h>

#include "support/WindowActions.h"

namespace support {
namespace {

Popups* g_script = nullptr;

/// A dialog that waits for the user: the one in front, if it is no other's owner at the moment.
HWND FrontDialog() {
    HWND front = nullptr;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM found) -> BOOL {
            const bool waits = IsWindowVisible(window) && IsWindowEnabled(window) &&
                               ClassOf(window) == L"#32770" && GetWindow(window, GW_OWNER);
            if (waits) *reinterpret_cast<HWND*>(found) = window;
            return !waits;
        },
        reinterpret_cast<LPARAM>(&front));
    return front;
}

void Command(HWND dialog, int button) {
    PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, button)));
}

}  // namespace

Popups::Popups()
    : m_timer(SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {
          // One more may be in the queue when the timer has gone.
          if (g_script) g_script->Look();
      })) {
    g_script = this;
}

Popups::~Popups() {
    KillTimer(nullptr, m_timer);
    g_script = nullptr;
    ExpectNoMore();
}

void Popups::ExpectNoMore() {
    for (const Step& step : m_steps) ADD_FAILURE() << "this never came: " << Utf8(step.text);
    m_steps.clear();
}

Popups& Popups::Expect(std::wstring text, Work work) {
    m_steps.push_back({std::move(text), std::move(work)});
    return *this;
}

Popups& Popups::Expect(std::wstring text, int button) {
    return Expect(std::move(text), [button](HWND dialog) { Command(dialog, button); });
}

Popups& Popups::ExpectFile(std::wstring title, std::wstring path, Work before) {
    return Expect(std::move(title), [path = std::move(path), before = std::move(before)](HWND dialog) {
        if (before) before(dialog);
        if (!path.empty()) EnterText(InFileDialog(dialog, kFileNameField), path);
        Command(dialog, path.empty() ? IDCANCEL : IDOK);
    });
}

void Popups::Look() {
    const HWND dialog = FrontDialog();
    if (!dialog || dialog == m_worked) return;
    const std::wstring says = TextOf(dialog) + L"\n" + LabelsOf(dialog);
    m_worked = dialog;
    if (m_steps.empty() || says.find(m_steps.front().text) == std::wstring::npos) {
        ADD_FAILURE() << "unexpected: " << Describe(dialog);
        Command(dialog, GetDlgItem(dialog, IDCANCEL) ? IDCANCEL : IDNO);
        return;
    }
    const Work work = std::move(m_steps.front().work);
    m_steps.pop_front();
    work(dialog);
}

HWND InFileDialog(HWND dialog, int id) {
    HWND found = GetDlgItem(dialog, id);
    for (HWND child = nullptr;
         !found && (child = FindWindowExW(dialog, child, L"#32770", nullptr)) != nullptr;)
        found = GetDlgItem(child, id);
    return found;
}

}  // namespace support
