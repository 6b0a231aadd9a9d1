#pragma once

#include <string>

#include "Dialog.h"
#include "Handles.h"

/// Version, date and copyright, and a link that opens the licence beside the program. Without that file the
/// link is not shown.
class CAboutDlg : public CDialog {
  public:
    CAboutDlg();

  private:
    std::span<const CRoute> Routes() const override;
    bool OnInitDialog() override;
    void OnLicence();

    std::wstring m_licencePath;
    UniqueIcon m_icon;
};
