// The preset buttons. Their commands are to come; the buttons stay without effect until then.
#pragma once

class CPresetView {
  public:
    void OnImport() {}
    void OnExport() {}
    void OnManage() {}
};
