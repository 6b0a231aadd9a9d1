// The system's open and save dialogs, with controls of our own from an added template.
#pragma once

#include <windows.h>

#include <commdlg.h>

#include <optional>
#include <string>

#include "Controls.h"
#include "SubclassedControl.h"

struct FileDialogSettings {
    std::wstring title;
    std::wstring defaultExtension;  // without the dot
    std::wstring filterText;        // as in "Text files (*.txt)"
    std::wstring initialFolder;     // empty: the system's choice
    std::wstring proposedName;
    DWORD flags = 0;      // OFN_... beyond those that the class sets itself
    UINT templateId = 0;  // a dialog template of ours below the file list; 0 for none
};

/// What a derived class overrides or asks for works in a dialog with a template of ours only.
/// Failure contract: Run gives nothing when the user cancelled or the dialog could not be shown.
class CFileDialog {
  public:
    explicit CFileDialog(FileDialogSettings settings) : m_settings(std::move(settings)) {}
    virtual ~CFileDialog() = default;

    /// Each gives the full path that the user confirmed.
    std::optional<std::wstring> RunOpen(HWND owner) { return Run(owner, &::GetOpenFileNameW); }
    std::optional<std::wstring> RunSave(HWND owner) { return Run(owner, &::GetSaveFileNameW); }

  protected:
    /// All controls are there; Window() is the added template's window.
    virtual void OnInitDone() {}
    virtual void OnFolderChange() {}
    /// Another file may have been chosen: by a click, or by a name that was typed a moment ago.
    virtual void OnSelectionChange() {}
    /// False keeps the dialog open.
    virtual bool OnFileOk() { return true; }
    /// A notification of a control of the added template.
    virtual void OnCommand(UINT /*id*/, UINT /*code*/) {}

    CWindow Window() const { return m_window; }
    /// Full path of the file chosen at the moment, and of the folder shown; empty when there is none.
    std::wstring CurrentPath() const;
    std::wstring CurrentFolder() const { return Query(CDM_GETFOLDERPATH); }
    /// While OnFileOk runs, the full path that the dialog made of the name.
    const std::wstring& ConfirmedPath() const { return m_confirmed; }

  private:
    /// The system sends the hook no notification of typing.
    class CNameWatch : public CSubclassedControl<CWindow> {
      public:
        void Watch(HWND window);

      private:
        Answer OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
        HWND m_hookWindow = nullptr;
    };

    std::optional<std::wstring> Run(HWND owner, BOOL(WINAPI* show)(OPENFILENAMEW*));
    std::wstring Query(UINT message) const;
    std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam);
    bool OnConfirmed(const wchar_t* path);
    static UINT_PTR CALLBACK Hook(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    FileDialogSettings m_settings;
    CWindow m_window;
    CNameWatch m_nameWatch;
    std::wstring m_confirmed;
};
