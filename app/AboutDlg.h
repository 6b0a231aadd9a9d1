#pragma once

#include "Dialog.h"
#include "Handles.h"

class CAboutDlg : public CDialog {
  public:
    CAboutDlg();

  private:
    bool OnInitDialog() override;

    UniqueIcon m_icon;
};
