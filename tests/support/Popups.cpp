#include "support/Popups.h"

#include <dlgs.h>

#include <gtest/gtest.h>

#include "resource.h"
#include "support/WindowActions.h"

namespace support {
namespace {

Popups* g_script = nullptr;

/// A dialog that waits for the user: the one in front, if it is no other's owner at the moment. The main one
/// is told by its controls, since one without an owner hangs the test as well.
HWND FrontDialog() {
    const auto waits = [](HWND dialog) {
        return GetWindowThreadProcessId(dialog, nullptr) == GetCurrentThreadId() && IsWindowVisible(dialog) &&
               IsWindowEnabled(dialog) && !GetDlgItem(dialog, IDC_CATEGORIES);
    };
    HWND dialog = nullptr;
    do dialog = FindWindowExW(nullptr, dialog, L"#32770", nullptr);
    while (dialog && !waits(dialog));
    return dialog;
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

Popups& Popups::ExpectPrompt(std::wstring title, std::wstring text, int button) {
    return Expect(std::move(title), [text = std::move(text), button](HWND prompt) {
        EnterText(GetDlgItem(prompt, IDC_PROMPT_VALUE), text);
        Command(prompt, button);
    });
}

Popups& Popups::ExpectFile(std::wstring title, std::wstring path, Work before) {
    return Expect(std::move(title), [path = std::move(path), before = std::move(before)](HWND dialog) {
        if (before) before(dialog);
        if (!path.empty()) EnterText(FileNameField(dialog), path);
        Command(dialog, path.empty() ? IDCANCEL : IDOK);
    });
}

void Popups::Look() {
    const HWND dialog = FrontDialog();
    const bool owned = !m_ownersMatter || GetWindow(dialog, GW_OWNER);
    if (dialog && owned && m_all) return m_all(dialog);
    if (!dialog || dialog == m_worked) return;
    m_worked = dialog;
    if (!owned || m_steps.empty() || Describe(dialog).find(Utf8(m_steps.front().text)) == std::string::npos) {
        ADD_FAILURE() << (owned ? "unexpected: " : "without an owner: ") << Describe(dialog);
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

HWND FileNameField(HWND dialog) {
    const HWND combo = InFileDialog(dialog, cmb13);
    return combo ? combo : InFileDialog(dialog, edt1);
}

}  // namespace support
