// Names that become those of files, and names of plug-ins: a line each.
#include "FriendlyNameRules.h"
#include "PresetName.h"
#include "fuzz/FuzzInput.h"

using support::Require;

namespace {

void TryFileName(const std::wstring& name) {
    const auto file = PresetFileName(name);
    if (!file) return;
    Require(name.starts_with(*file) && PresetFileName(*file) == file);
    support::RequirePlain(*file);
    Require(file->size() <= 255);
}

void TryPluginName(const std::wstring& name) {
    Require(StoredFullName(name, false) == name);
    Require(name.ends_with(StoredFullName(name, true)));
    Require(IsBlank(StoredFullName(name, true)) == IsBlank(name));
    for (std::size_t i = 0; i < kCategories.size(); ++i) {
        const auto category = static_cast<Category>(i);
        const std::wstring readable = ReadableName(name, category);
        Require(name.starts_with(readable) && ReadableName(readable, category) == readable);
    }
}

}  // namespace

void TryInput(std::string_view bytes) {
    for (const std::wstring& name : support::LinesOf(bytes)) {
        TryFileName(name);
        TryPluginName(name);
    }
}
