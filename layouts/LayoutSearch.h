// Which item of a layout is looked for.
#pragma once

#include <span>
#include <string>

#include "TreeCtrlWrapper.h"

enum class SearchOrder { Forwards, Backwards };

/// The next item from the caret on, in closed folders too, whose name, vendor and class id have all of the
/// folded words. The search goes round, and ends with the caret itself. Null when there is none.
HTREEITEM FindNextItem(const CTreeCtrlWrapper& layout, std::span<const std::wstring> words,
                       SearchOrder order);
