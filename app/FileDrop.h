// Files that are dropped on the main dialog.
#pragma once

#include <string>
#include <vector>

#include "Dialog.h"
#include "LayoutFilesView.h"
#include "LayoutTreeView.h"
#include "PluginInventory.h"
#include "PluginListView.h"
#include "PresetView.h"
#include "StudioSetView.h"

/// Opens the last layout among them, and shows for the last studio set and each preset file what it would
/// bring. What is none of these, or can't be read, is named in one message.
class CFileDrop {
  public:
    /// Where the dropped files go.
    struct Takers {
        const CPluginInventory& inventory;
        CPluginListView& list;
        CPresetView& presets;
        CLayoutTreeView& tree;
        CLayoutFilesView& layouts;
        CStudioSetView& sets;
    };
    CFileDrop(CDialog& dialog, Takers takers) : m_dialog(dialog), m_takers(takers) {}

    void OnInitDialog() const;
    /// From now on files can be dropped.
    void Accept() const;
    void OnDrop(const CDroppedFiles& files);

  private:
    bool CanTakeFiles() const;
    void ImportPresets(const std::vector<std::wstring>& files, std::vector<std::wstring>& others);
    /// `others` says of each what it is, `count` how many files were dropped.
    void Report(const std::vector<std::wstring>& others, UINT count) const;

    CDialog& m_dialog;
    const Takers m_takers;
};
