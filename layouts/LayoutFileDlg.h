// The dialogs in which a layout file is chosen: the system's, with a row for the display name when saving.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "FileDialog.h"

/// The settings that opening and saving share.
FileDialogSettings LayoutDialogSettings(UINT titleId, const std::wstring& folder);

/// A file name made of a display name. What no file name can hold is left out: the system's dialog would not
/// open with it.
std::wstring ProposedFileName(std::wstring_view displayName);

class CLayoutFileDlg : public CFileDialog {
  public:
    /// `names` are offered, `displayName` is entered at first.
    CLayoutFileDlg(const std::wstring& folder, const std::wstring& proposedPath,
                   std::vector<std::wstring> names, std::wstring displayName);

    /// After RunSave: the name that the user confirmed, never empty.
    const std::wstring& DisplayName() const { return m_displayName; }

  protected:
    void OnInitDone() override;
    void OnCommand(UINT id, UINT code) override;
    bool OnFileOk() override;

  private:
    /// The field for the file name, which the system moves when the dialog is resized.
    class CFileNameField : public CSubclassedControl<CWindow> {
      public:
        explicit CFileNameField(const CLayoutFileDlg& dialog) : m_dialog(dialog) {}

      private:
        Answer OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
        const CLayoutFileDlg& m_dialog;
    };
    void FocusName() const;
    /// Puts the added row in line with that of the file name.
    void AlignRow() const;

    CFileNameField m_fileName{*this};
    std::vector<std::wstring> m_names;
    std::wstring m_displayName;
    std::wstring m_proposed;  // put into the field for the file name last
};
