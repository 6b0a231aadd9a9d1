// The dialogs in which the user changes a layout's items.
#pragma once

#include "LayoutHistory.h"
#include "PluginInventory.h"
#include "TreeCtrlWrapper.h"

/// Shows the properties of a folder or a plug-in and takes over what is confirmed. Nothing is shown for a
/// separator or a null item.
void ShowItemProperties(HWND owner, CTreeCtrlWrapper& layout, HTREEITEM item,
                        const CPluginInventory& inventory, CLayoutHistory& history);
