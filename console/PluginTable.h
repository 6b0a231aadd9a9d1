// The plug-ins as a table to read, as CSV (RFC 4180) and as JSON (RFC 8259).
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include "PluginCategory.h"

/// What is known of a plug-in; a text that does not apply is empty.
struct PluginTableRow {
    Category category = Category::DirectXEffects;
    std::wstring name;
    std::wstring vendor;
    std::wstring clsid;
    std::wstring md5;
    std::optional<int> vstId;
    std::wstring file;
    bool excluded = false;
    bool permanent = false;
    bool missing = false;
    std::wstring duplicateOf;
};

// Each line ends with a line feed; whoever writes it makes of that what the system has.

/// As wide as its contents need, with blanks between the columns; cut off at `width` where it is given.
std::wstring TableOf(std::span<const PluginTableRow> rows, std::optional<std::size_t> width);
std::wstring CsvOf(std::span<const PluginTableRow> rows);
/// An array of objects; what does not apply is null, but for vendor and file, which are empty texts.
std::wstring JsonOf(std::span<const PluginTableRow> rows);

/// So many places of a console a text takes: most letters of East Asia take two.
std::size_t ConsoleWidthOf(std::wstring_view text);
