// The buttons that start the VST scanner and the adapter's configuration program.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Dialog.h"
#include "HostWindow.h"
#include "PluginListView.h"
#include "VstToolCommands.h"
#include "VstToolPaths.h"

/// While a program runs, the dialog is disabled, but it keeps painting, and a caption says why. A program
/// that is not registered or can't be started does nothing.
class CVstToolsView {
  public:
    CVstToolsView(CDialog& dialog, const CPluginInventory& inventory, CPluginListView& list,
                  const CHostWindow& host, const VstToolPaths& paths, VstKey key);

    void OnScan() { LaunchVstTool(kScanPlugins); }
    void OnOptions() { LaunchVstTool(kScannerOptions); }
    void OnPluginProperties() { LaunchVstTool(kVstProperties); }
    void OnAdapterWizard() { LaunchVstTool(kAdapterWizard); }
    void OnAdapterProperties() { LaunchVstTool(kAdapterProperties); }

  private:
    void LaunchVstTool(const VstToolAction& action);
    /// False when the program was not started, or the dialog has to end before it. `group` is the box around
    /// its buttons.
    bool RunTool(const std::wstring& program, const std::wstring& arguments, const CWindow& group) const;
    void BringToFront() const;
    void RefreshPlugins();
    std::optional<std::wstring> CurrentPlugin() const;
    /// Of the scanner's last change to its inventory; 0 when that is not known.
    std::uint64_t LastUpdateTime() const;

    CDialog& m_dialog;
    const CPluginInventory& m_inventory;
    CPluginListView& m_list;
    const CHostWindow& m_host;
    const VstToolPaths& m_paths;
    const VstKey m_key;
};
