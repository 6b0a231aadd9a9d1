// A dialog from a numbered template, run modally or modelessly.
#pragma once

#include <windows.h>

#include <span>

#include "Controls.h"
#include "FullTextTip.h"
#include "Routes.h"

/// A dialog class gives its route table and overrides what it needs of the rest. While
/// its window is disabled it takes no commands. Handlers and PreTranslate run Guarded: what one
/// throws ends that one, never the dialog.
class CDialog : public CWindow {
  public:
    explicit CDialog(UINT templateId) : m_templateId(templateId) {}
    virtual ~CDialog();
    CDialog(const CDialog&) = delete;
    CDialog& operator=(const CDialog&) = delete;

    /// Shows the dialog and runs until End; the owner, if any, is disabled meanwhile. Gives End's result, or
    /// -1 when the dialog can't be created or its window was taken away.
    INT_PTR RunModal(HWND owner);
    /// Creates the window hidden, for a loop that passes its messages through Translate.
    bool CreateModeless(HWND owner);
    /// The dialog's share of a message loop: PreTranslate, then the system's own keys. True when the message
    /// is handled.
    bool Translate(MSG& message);
    /// Ends RunModal, or destroys a modeless dialog.
    void End(INT_PTR result);

    /// Enables or disables a control. One that has the focus first gives it to `focusTaker`: a disabled
    /// control with the focus would leave the keyboard without effect.
    void EnableItem(int id, bool enabled, int focusTaker) const;

    /// While it works on many items, it takes no commands: another program's would come between two of them.
    void SetWorking(bool working) { m_working = working; }
    bool IsWorking() const { return m_working; }

  protected:
    virtual std::span<const CRoute> Routes() const { return {}; }
    /// True lets the system set the focus to the first control.
    virtual bool OnInitDialog() { return true; }
    /// The default button, or Enter in a dialog without one.
    virtual void OnOK() { End(IDOK); }
    /// The button with id 2, the close box; Escape, where PreTranslate lets it pass.
    virtual void OnCancel() { End(IDCANCEL); }
    /// Sees each message of the dialog and its controls before the system's dialog keys; true swallows it.
    virtual bool PreTranslate(const MSG&) { return false; }

  private:
    static INT_PTR CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    Answer Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    Answer DispatchRoutes(UINT message, UINT code, UINT id, WPARAM wParam, LPARAM lParam);
    void RunLoop();

    CFullTextTip m_fullText;
    UINT m_templateId;
    INT_PTR m_result = -1;
    bool m_modal = false;
    bool m_ended = false;
    bool m_working = false;
};
