// Which preset names may become file names.
#pragma once

#include <optional>
#include <string_view>

/// The file name of a preset; nothing when the name does not stay one plain file name inside its folder,
/// whatever the system makes of it: no path, stream or wild card, no device. Preset names come from
/// strangers' files. Dots and blanks at the end are left out, as the system leaves them out of every file
/// name.
std::optional<std::wstring_view> PresetFileName(std::wstring_view name);
