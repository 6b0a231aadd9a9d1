// Plug-ins for the rules of the studio.
#pragma once

#include <algorithm>

#include "Duplicates.h"

namespace support {

/// In the order in which they are found; each has a class id of its own, and a file of its own when none is
/// given.
class StudioPlugins : public std::vector<StudioPlugin> {
  public:
    StudioPlugin& Add(Category category, const wchar_t* name, const wchar_t* vendor = L"",
                      const wchar_t* file = L"") {
        const auto number = static_cast<std::uint32_t>(size() + 1);
        StudioPlugin plugin{.item = {}, .name = name, .vendor = vendor, .file = file};
        if (plugin.file.empty()) plugin.file = std::to_wstring(number);
        plugin.item.category = category;
        plugin.item.clsid = {number, 0, 0, {}};
        return emplace_back(plugin);
    }
};

inline std::wstring Fold(std::wstring text) {
    std::ranges::transform(text, text.begin(),
                           [](wchar_t c) -> wchar_t { return c == L'É' ? L'e' : c | 0x20; });
    return text;
}

inline const TextFolds kFolds{&Fold, [](std::wstring path) {
                                  for (wchar_t& c : path) c |= 0x20;
                                  return path;
                              }};

}  // namespace support
