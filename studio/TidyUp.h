// The command Tidy Up: dead entries and duplicates of all categories, to be ticked and then put away at once.
#pragma once

#include <string>
#include <vector>

#include "Backups.h"
#include "Dialog.h"
#include "ExclusionList.h"
#include "HostWindow.h"
#include "LayoutTreeView.h"
#include "PluginInventory.h"
#include "PluginListView.h"
#include "ReviewDlg.h"
#include "TidyFindings.h"

class CTidyUp {
  public:
    /// What is looked at and changed.
    struct Rooms {
        CPluginInventory& inventory;
        CExclusionList& exclusions;
        CPluginListView& list;
        CLayoutTreeView& tree;
        const CHostWindow& host;
        CBackups& backups;
    };
    CTidyUp(CDialog& dialog, Rooms rooms) : m_dialog(dialog), m_rooms(rooms) {}

    void OnTidyUp();

  private:
    /// All is looked for when the command begins; nothing is read again before it ends.
    struct State {
        std::vector<StudioPlugin> plugins;
        std::vector<FileState> files;          // one a plug-in
        std::vector<SharedLayoutItem> layout;  // all items
        std::vector<TidyFinding> findings;     // one a row
    };
    /// What is ticked, by what is done.
    struct Ticked {
        std::vector<std::size_t> removed;   // plug-ins
        std::vector<std::size_t> excluded;  // plug-ins
        std::vector<LayoutItemId> items;
        bool scanHelps = false;
    };
    bool Look(State& state);
    std::vector<ReviewRow> RowsOf(const State& state) const;
    static Ticked TickedOf(const State& state, const std::vector<std::size_t>& rows);
    void Tidy(const State& state, Ticked ticked);
    bool HasRoomFor(const std::vector<IdToExclude>& exclusions) const;
    bool ChangePlugins(const State& state, Ticked& ticked, std::vector<IdToExclude>& exclusions);
    void Refresh(const Ticked& ticked) const;
    void Report(const State& state, const Ticked& ticked, const std::vector<IdToExclude>& exclusions) const;
    void Say(const std::wstring& text, UINT look) const;

    CDialog& m_dialog;
    const Rooms m_rooms;
};
