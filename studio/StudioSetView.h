// The commands that save and load a studio set: what they would do is shown first.
#pragma once

#include <functional>
#include <string>

#include "Dialog.h"
#include "LayoutFilesView.h"
#include "LayoutTreeView.h"
#include "LongWork.h"
#include "StudioSets.h"

class CStudioSetView {
  public:
    /// After `loaded`, plug-ins, layouts and presets may be other than before.
    CStudioSetView(CDialog& dialog, CStudioSets sets, CLayoutTreeView& tree, CLayoutFilesView& files,
                   std::function<void()> loaded)
        : m_dialog(dialog),
          m_sets(std::move(sets)),
          m_tree(tree),
          m_files(files),
          m_loaded(std::move(loaded)) {}

    void OnSave();
    void OnLoad();
    /// Shows what a file would bring, and loads what the user ticks.
    void Load(const std::wstring& path);

  private:
    bool MaySave();
    bool Gather(SetToSave& save);
    bool Review(SetToSave& save) const;
    bool Plan(const std::wstring& path, SetToLoad& load);
    bool Review(const std::wstring& path, SetToLoad& load) const;
    bool Ask(const std::wstring& question) const;
    void Report(const std::wstring& path, const SetOutcome& outcome) const;
    SetEvents EventsOf(CLongWork& work) const;

    CDialog& m_dialog;
    CStudioSets m_sets;
    CLayoutTreeView& m_tree;
    CLayoutFilesView& m_files;
    const std::function<void()> m_loaded;
};
