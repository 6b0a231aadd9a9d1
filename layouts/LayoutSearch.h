// Which item of a layout is looked for.
#pragma once

#include <span>
#include <string>

#include "TreeCtrlWrapper.h"

/// The next item behind the caret, in closed folders too, whose name, vendor and class id have all of the
/// folded words. The search goes round, and ends with the caret itself. Null when there is none.
HTREEITEM FindNextItem(const CTreeCtrlWrapper& layout, std::span<const std::wstring> words);
