// Filling the open layout with the plug-ins that it lacks.
#pragma once

#include "Dialog.h"
#include "ExclusionList.h"
#include "LayoutPlan.h"
#include "LayoutTreeView.h"
#include "PluginInventory.h"

/// Folders that the tree has at its top level under the same name are filled, others come to its end. One
/// step to undo; nothing is saved.
class CLayoutFill {
  public:
    CLayoutFill(const CDialog& dialog, const CPluginInventory& inventory, const CExclusionList& exclusions,
                CLayoutTreeView& tree)
        : m_dialog(dialog), m_inventory(inventory), m_exclusions(exclusions), m_tree(tree) {}

    void OnByVendor() { Fill(FillOrder::ByVendor); }
    void OnByCategory() { Fill(FillOrder::ByCategory); }
    void OnByBoth() { Fill(FillOrder::ByCategoryThenVendor); }

  private:
    void Fill(FillOrder order);

    const CDialog& m_dialog;
    const CPluginInventory& m_inventory;
    const CExclusionList& m_exclusions;
    CLayoutTreeView& m_tree;
};
