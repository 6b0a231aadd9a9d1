#include "Duplicates.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <utility>

namespace {

constexpr wchar_t kBlanks[] = L" \t\r\n\u00A0\u3000";

bool IsVst2(Category category) {
    return category == Category::VstEffects || category == Category::VstInstruments;
}

Category AsVst3(Category category) {
    return category == Category::VstEffects ? Category::Vst3Effects : Category::Vst3Instruments;
}

/// Texts that stand for a plug-in or for the same one in another way; none contains the character between.
using Key = std::optional<std::wstring>;

std::wstring Joined(Category category, const std::wstring& name, const std::wstring& third) {
    return std::to_wstring(static_cast<int>(category)) + L'\0' + name + L'\0' + third;
}

struct Keys {
    Key maker;  // vendor, name and category
    Key vst3;   // the same of the VST3 that it may be there as
    Key file;   // file, name and category; of a VST the unique id, too, since a shell may repeat names
};

Keys KeysOf(const StudioPlugin& plugin, const TextFolds& fold) {
    Keys keys;
    const Category category = plugin.item.category;
    const std::wstring name = ComparedText(plugin.name, fold.text);
    const std::wstring vendor = ComparedText(plugin.vendor, fold.text);
    if (name.empty()) return keys;
    if (!vendor.empty()) keys.maker = Joined(category, name, vendor);
    if (!vendor.empty() && IsVst2(category)) keys.vst3 = Joined(AsVst3(category), name, vendor);
    if (!plugin.file.empty())
        keys.file = Joined(category, name, fold.path(plugin.file) + L'\0' + std::to_wstring(plugin.uniqueId));
    return keys;
}

/// One of them can't be excluded alone then.
bool SharesId(const StudioPlugin& a, const StudioPlugin& b) {
    const auto ids = ExclusionIdsOf(b);
    return std::ranges::any_of(ExclusionIdsOf(a),
                               [&](const Guid& id) { return std::ranges::find(ids, id) != ids.end(); });
}

/// Registered several times, which no list tells apart.
bool IsSameClass(const StudioPlugin& a, const StudioPlugin& b) {
    return a.item.clsid == b.item.clsid && a.item.md5Clsid == b.item.md5Clsid;
}

/// The first plug-in of each key.
class CFirsts {
  public:
    void Add(const Key& key, std::size_t plugin) {
        if (key) m_plugins.try_emplace(*key, plugin);
    }
    std::optional<std::size_t> Find(const Key& key) const {
        const auto found = key ? m_plugins.find(*key) : m_plugins.end();
        return found == m_plugins.end() ? std::nullopt : std::optional(found->second);
    }

  private:
    std::unordered_map<std::wstring, std::size_t> m_plugins;
};

}  // namespace

std::wstring ComparedText(const std::wstring& text, const FoldText& fold) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::wstring::npos) return {};
    return fold(text.substr(first, text.find_last_not_of(kBlanks) - first + 1));
}

std::vector<Duplicate> FindDuplicates(std::span<const StudioPlugin> plugins,
                                      const std::function<bool(std::size_t)>& isThere,
                                      const TextFolds& fold) {
    std::vector<std::pair<std::size_t, Keys>> counted;
    CFirsts makers;
    CFirsts files;
    CFirsts vst3s;  // no inventory lists 32-bit ones, which would be no substitute for a 64-bit VST
    for (std::size_t i = 0; i < plugins.size(); ++i) {
        if (plugins[i].excluded || plugins[i].permanent || !isThere(i)) continue;
        counted.emplace_back(i, KeysOf(plugins[i], fold));
    }
    std::vector<Duplicate> duplicates;
    for (const auto& [i, keys] : counted) vst3s.Add(keys.maker, i);
    for (const auto& [i, keys] : counted) {
        if (const auto vst3 = vst3s.Find(keys.vst3); vst3 && !SharesId(plugins[i], plugins[*vst3])) {
            duplicates.push_back({i, *vst3, DuplicateKind::AlsoVst3});
            continue;
        }
        const auto file = files.Find(keys.file);
        const auto maker = makers.Find(keys.maker);
        if (file && !SharesId(plugins[i], plugins[*file])) {
            duplicates.push_back({i, *file, DuplicateKind::SameTwice});
        } else if (maker && !IsSameClass(plugins[i], plugins[*maker])) {
            duplicates.push_back({i, *maker, DuplicateKind::MayBothBeRight});
        }
        files.Add(keys.file, i);
        makers.Add(keys.maker, i);
    }
    return duplicates;
}
