// The preset commands: import, export and managing, for plug-ins that the caller has chosen.
#pragma once

#include <string>
#include <vector>

#include "Dialog.h"
#include "PresetPlugin.h"

class CPresetView {
  public:
    explicit CPresetView(CDialog& dialog) : m_dialog(dialog) {}

    /// Nothing happens without a plug-in.
    void Import(const std::vector<PresetPlugin>& chosen);
    void Export(const std::vector<PresetPlugin>& chosen);
    void Manage(const PresetPlugin& plugin) const;

  private:
    void Report(const std::wstring& text) const;

    CDialog& m_dialog;
    std::wstring m_folder;  // that the preset file dialogs visited last
};
