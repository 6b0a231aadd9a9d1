// The buttons that start the VST scanner and the adapter's configuration program, and the renaming of a
// plug-in. Their commands are to come; the buttons stay without effect until then.
#pragma once

class CVstToolsView {
  public:
    void OnScan() {}
    void OnOptions() {}
    void OnPluginProperties() {}
    void OnAdapterWizard() {}
    void OnAdapterProperties() {}
};

class CFriendlyNameView {
  public:
    void OnRename() {}
};
