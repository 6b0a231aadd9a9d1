// A prompt for one line of text.
#pragma once

#include <string>

#include "Dialog.h"

/// RunModal gives IDOK when the user confirmed, and only then is the value written back. The dialog is as
/// wide as the label and the value ask for.
class CSinglePropDlg : public CDialog {
  public:
    /// Caption and label by their ids in the string table, or as texts.
    CSinglePropDlg(UINT captionId, UINT labelId, std::wstring& value, UINT helpContext = 0);
    CSinglePropDlg(std::wstring caption, std::wstring label, std::wstring& value, UINT helpContext = 0);

  private:
    bool OnInitDialog() override;
    void OnOK() override;
    void PlaceControls() const;

    std::wstring m_caption;
    std::wstring m_label;
    std::wstring& m_value;
    UINT m_helpContext;
};
