// Class ids as scripts write them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "Guid.h"

/// With or without braces, in letters of either case, blanks around it; nothing for any other text.
std::optional<Guid> ParseIdText(std::wstring_view text);

/// A line that is no class id.
struct BadIdLine {
    std::size_t number = 0;  // the first line has 1
    std::wstring text;
};

/// One class id a line; empty lines and those that begin with "#" are passed over. Or CSV with a heading that
/// has a column "clsid", as the list is written.
std::variant<std::vector<Guid>, BadIdLine> ReadIdList(std::wstring_view text);
