// The layout list, the four buttons above the tree, and the layout files behind them. The file commands are
// to come; until then there is never a layout to save, and the buttons stay without effect.
#pragma once

#include <windows.h>

#include <string>

#include "Dialog.h"

class CLayoutFilesView {
  public:
    CLayoutFilesView(CDialog& dialog, std::wstring folder) : m_dialog(dialog), m_folder(std::move(folder)) {}

    void OnInitDialog();

    /// Asks whether to save a modified layout, with the given MB_ buttons; gives the answer's button id, IDNO
    /// when there is nothing to save.
    int AskToSave(UINT /*buttons*/) const { return IDNO; }
    /// Lists the layout files of the layouts folder.
    void ListLayouts() {}
    void OpenByPath(const std::wstring& /*path*/) {}

    void OnNew() {}
    void OnOpen() {}
    void OnSave() {}
    void OnDelete() {}
    void OnPick() {}
    void OnEditName() {}

  private:
    CDialog& m_dialog;
    std::wstring m_folder;
};
