#include "VstEntryRules.h"

#include <algorithm>

#include "AsciiCase.h"

namespace {

/// The brace and the first three groups of a class id's text; the rest tells the builds of a plug-in apart.
constexpr std::size_t kSharedCharacters = 20;

/// The shared part with its case folded; nothing when the text is too short to have one.
std::optional<std::wstring> SharedPrefix(const std::optional<std::wstring>& clsid) {
    if (!clsid || clsid->size() < kSharedCharacters) return std::nullopt;
    std::wstring prefix = clsid->substr(0, kSharedCharacters);
    std::ranges::transform(prefix, prefix.begin(), AsciiLower);
    return prefix;
}

}  // namespace

bool IsUsable(const VstEntry& entry) {
    return (entry.kind.isVst || entry.kind.isVst3) && !(entry.isShell && entry.isShellRoot) && !entry.isBad &&
           (entry.clsidPlugMd5 || entry.clsidPlug) && entry.fullPath;
}

void CTwinIndex::Add(const VstEntry& entry) {
    if (!entry.isX64) return;
    if (auto prefix = SharedPrefix(entry.clsidPlug)) m_prefixes.insert(std::move(*prefix));
}

bool CTwinIndex::Hides(const VstEntry& entry) const {
    if (entry.isX64) return false;
    if (entry.kind.isVst3) return true;
    const auto prefix = SharedPrefix(entry.clsidPlug);
    return prefix && m_prefixes.contains(*prefix);
}
