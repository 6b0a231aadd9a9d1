// Whether the program may close, and what becomes of a modified layout and of open questions then.
#pragma once

#include "Dialog.h"
#include "DialogSize.h"
#include "HostWindow.h"
#include "LayoutFilesView.h"
#include "LayoutTreeView.h"

class CClosing {
  public:
    CClosing(const CDialog& dialog, const CHostWindow& host, const CDialogSize& size, CLayoutTreeView& tree,
             CLayoutFilesView& files)
        : m_dialog(dialog), m_host(host), m_size(size), m_tree(tree), m_files(files) {}

    /// Asks whether to save a modified layout; false when the dialog has to stay open, because the user
    /// cancelled, nobody answered or the save failed. A discarded layout counts as unmodified.
    bool MayClose();
    /// What was to close after that stays open.
    void OnStays();
    bool OnQueryEndSession();
    void OnEndSession(bool ends);
    void OnDestroy() const;

  private:
    const CDialog& m_dialog;
    const CHostWindow& m_host;
    const CDialogSize& m_size;
    CLayoutTreeView& m_tree;
    CLayoutFilesView& m_files;
    bool m_discarded = false;  // a modified layout
};
