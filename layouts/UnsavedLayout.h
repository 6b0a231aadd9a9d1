// What becomes of a layout that was changed and not saved.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

#include "Autosave.h"
#include "Backups.h"
#include "XmlTreeCtrl.h"

/// While there are changes a copy of the layout outlives a crash; when they are dropped, a copy goes to the
/// backups. Each copy is a layout file that notes the layout's name and its own file, too.
class CUnsavedLayout {
  public:
    struct Title {
        std::wstring name;
        std::wstring path;  // empty when it has no file
    };
    CUnsavedLayout(const CDialog& dialog, CTreeCtrlWrapper& layout, const LayoutPlugins& plugins,
                   CBackups& backups, const std::wstring& dataFolder, std::function<Title()> title);

    /// A modified layout that is about to be lost goes to the backups; nothing for any other.
    std::optional<CBackup> BackUp();
    /// Asks whether to open what a crash has left, one copy after the other until `open` could open one. The
    /// others go to the backups. False when none was opened.
    bool Offer(const std::function<bool(const std::wstring& copy)>& open);
    bool OnTimer(UINT_PTR timer) { return m_autosave.OnTimer(timer); }

  private:
    DWORD Write(const std::wstring& copy);
    CBackup KeepAs(const std::wstring& name, const std::function<DWORD(const std::wstring& copy)>& write);

    const CDialog& m_dialog;
    CTreeCtrlWrapper& m_layout;
    const LayoutPlugins& m_plugins;
    CBackups& m_backups;
    const std::function<Title()> m_title;
    CAutosave m_autosave;
};
