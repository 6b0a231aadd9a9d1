// Whether the program may close, and what becomes of a modified layout then.
#pragma once

#include "Dialog.h"
#include "DialogSize.h"
#include "LayoutFilesView.h"
#include "LayoutTreeView.h"

class CClosing {
  public:
    CClosing(const CDialog& dialog, const CDialogSize& size, CLayoutTreeView& tree, CLayoutFilesView& files)
        : m_dialog(dialog), m_size(size), m_tree(tree), m_files(files) {}

    /// Asks whether to save a modified layout; false when the dialog has to stay open, because the user
    /// cancelled, nobody answered or the save failed. A discarded layout counts as unmodified.
    bool MayClose();
    /// What was to close after that stays open.
    void OnStays();
    bool OnQueryEndSession();
    void OnEndSession(bool ends);

  private:
    const CDialog& m_dialog;
    const CDialogSize& m_size;
    CLayoutTreeView& m_tree;
    CLayoutFilesView& m_files;
    bool m_discarded = false;  // a modified layout
};
