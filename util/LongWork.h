// Work on many items: it tells how far it is, and can be ended.
#pragma once

#include <windows.h>

#include <shobjidl.h>

#include <cstddef>
#include <string>
#include <wrl/client.h>

#include "Dialog.h"

/// While it lasts the windows paint from time to time, but no key and no command gets through, so that
/// nothing else can begin meanwhile; what is typed or clicked is lost. A caption tells how far the work is
/// when it takes longer than a moment, and so does the taskbar's button of the program.
class CLongWork {
  public:
    /// The caption is a control of the dialog. "%s" of the text stands for the item's number, and for how
    /// many there are. The caption says again what it said before when the work is over. Where nobody knows
    /// how many there are, the text is 0, and nothing tells.
    CLongWork(CDialog& dialog, int captionId, UINT textId, std::size_t items);
    ~CLongWork();
    CLongWork(const CLongWork&) = delete;
    CLongWork& operator=(const CLongWork&) = delete;

    /// Before each item. False when the user has ended the work by Escape.
    bool Next();
    bool WasEnded() const { return m_ended; }

  private:
    void Show();
    void FindTaskbarButton();

    CDialog& m_dialog;
    const CWindow m_caption;
    const UINT m_textId;
    const std::size_t m_items;
    const std::wstring m_before;
    std::size_t m_item = 0;
    ULONGLONG m_nextLook;
    bool m_shown = false;
    bool m_ended = false;
    HWND m_button = nullptr;  // the window that it stands for
    Microsoft::WRL::ComPtr<ITaskbarList3> m_taskbar;
};
