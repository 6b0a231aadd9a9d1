#include "LongWork.h"

#include <utility>

#include "NumberText.h"
#include "Resources.h"
#include "TextFormat.h"

namespace {

constexpr ULONGLONG kInterval = 100;  // ms
constexpr int kMostPaints = 100;      // a window may ask to be painted again and again

/// Takes what was typed and clicked out of the queue, so that keys behind the first are seen, too, and
/// nothing of it acts on what the work has left. No window hears of it.
bool WasEscapePressed() {
    constexpr std::pair<UINT, UINT> kInput[] = {
        {WM_KEYDOWN, WM_KEYDOWN}, {WM_SYSKEYDOWN, WM_SYSKEYDOWN}, {WM_LBUTTONDOWN, WM_MBUTTONDBLCLK}};
    bool pressed = false;
    MSG message;
    for (const auto& [first, last] : kInput) {
        while (::PeekMessageW(&message, nullptr, first, last, PM_REMOVE)) {
            if (EndsLoop(message)) return pressed;  // it comes through every filter
            pressed = pressed || (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE);
        }
    }
    return pressed;
}

void Paint() {
    MSG message;
    for (int i = 0; i < kMostPaints && ::PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE);
         ++i) {
        if (EndsLoop(message)) break;
        ::DispatchMessageW(&message);
    }
}

}  // namespace

CLongWork::CLongWork(CDialog& dialog, int captionId, UINT textId, std::size_t items)
    : m_dialog(dialog),
      m_caption(dialog.Item(captionId)),
      m_textId(textId),
      m_items(items),
      m_before(m_caption.Text()),
      m_nextLook(::GetTickCount64() + kInterval) {
    m_dialog.SetWorking(true);
}

CLongWork::~CLongWork() {
    // An Escape that came too late is not for what comes next.
    if (m_shown) WasEscapePressed();
    m_dialog.SetWorking(false);
    if (m_shown) m_caption.SetText(m_before);
    if (m_taskbar) m_taskbar->SetProgressState(m_button, TBPF_NOPROGRESS);
}

bool CLongWork::Next() {
    ++m_item;
    if (m_ended || ::GetTickCount64() < m_nextLook) return !m_ended;
    m_ended = WasEscapePressed();
    if (!m_ended && m_textId != 0) Show();
    Paint();
    m_nextLook = ::GetTickCount64() + kInterval;
    return !m_ended;
}

void CLongWork::Show() {
    if (!m_shown) FindTaskbarButton();
    m_shown = true;
    m_caption.SetText(FormatText(LoadText(m_textId), NumberText(m_item), NumberText(m_items)));
    if (m_taskbar) m_taskbar->SetProgressValue(m_button, m_item, m_items);
}

/// A docked dialog has none: the window around it is another program's.
void CLongWork::FindTaskbarButton() {
    m_button = ::GetAncestor(m_dialog.Handle(), GA_ROOTOWNER);
    if (::GetWindowThreadProcessId(m_button, nullptr) != ::GetCurrentThreadId()) return;
    if (FAILED(
            ::CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&m_taskbar))) ||
        FAILED(m_taskbar->HrInit()))
        m_taskbar.Reset();
}
