// Which preset names may become file names.
#pragma once

#include <string_view>

/// A name that stays one plain file name inside its folder, whatever the system makes of it: no path, stream
/// or wild card, no device, nothing that is silently dropped from its end. Preset names come from strangers'
/// files.
bool IsPlainFileName(std::wstring_view name);
