// Renaming the selected plug-in.
#pragma once

#include "Dialog.h"
#include "FriendlyNames.h"
#include "PluginListView.h"

class CFriendlyNameView {
  public:
    CFriendlyNameView(CDialog& dialog, CPluginListView& list, CFriendlyNames& names)
        : m_dialog(dialog), m_list(list), m_names(names) {}

    /// One plug-in is selected, and its name can be changed.
    bool CanRename() const;
    /// Asks for the new name of the plug-in, if one alone is selected; a blank one leaves it as it is.
    void OnRename();

  private:
    CDialog& m_dialog;
    CPluginListView& m_list;
    CFriendlyNames& m_names;
};
