#include "LayoutPlan.h"

#include <algorithm>
#include <map>
#include <unordered_map>

namespace {

using Guids = std::unordered_set<Guid, GuidHash>;

/// What makes a plug-in the same as another one to a menu; empty when no file is known.
std::wstring EntryKey(const StudioPlugin& plugin, const TextFolds& fold) {
    return plugin.file.empty() ? std::wstring()
                               : fold.path(plugin.file) + L'\0' + ComparedText(plugin.name, fold.text);
}

std::vector<std::size_t> FindLacking(std::span<const StudioPlugin> plugins, Guids present,
                                     const TextFolds& fold) {
    const auto isIn = [&](const StudioPlugin& plugin) {
        return present.contains(plugin.item.clsid) || present.contains(plugin.item.md5Clsid);
    };
    present.erase(Guid{});
    std::unordered_set<std::wstring> entries;
    for (const StudioPlugin& plugin : plugins) {
        if (isIn(plugin)) entries.insert(EntryKey(plugin, fold));
    }
    entries.erase(L"");
    std::vector<std::size_t> lacking;
    for (std::size_t i = 0; i < plugins.size(); ++i) {
        const StudioPlugin& plugin = plugins[i];
        if (plugin.excluded || plugin.permanent || !GoesIntoLayouts(plugin.item.category) || isIn(plugin))
            continue;
        const std::wstring key = EntryKey(plugin, fold);
        if (!key.empty() && !entries.insert(key).second) continue;
        present.insert(plugin.item.clsid);
        lacking.push_back(i);
    }
    return lacking;
}

std::wstring Trimmed(const std::wstring& text) {
    return ComparedText(text, [](const std::wstring& same) { return same; });
}

/// The commonest spelling of each folded vendor; of those equally common the first.
class CVendors {
  public:
    CVendors(std::span<const StudioPlugin> plugins, const std::vector<std::size_t>& chosen,
             const FoldText& fold) {
        for (const std::size_t i : chosen) {
            const std::wstring spelling = Trimmed(plugins[i].vendor);
            Vendor& vendor = m_vendors[fold(spelling)];
            const int count = ++vendor.spellings[spelling];
            vendor.most = std::max(vendor.most, count);
        }
        for (const std::size_t i : chosen) {
            const std::wstring spelling = Trimmed(plugins[i].vendor);
            Vendor& vendor = m_vendors[fold(spelling)];
            if (vendor.name.empty() && vendor.spellings[spelling] == vendor.most) vendor.name = spelling;
        }
    }
    const std::wstring& NameOf(const std::wstring& folded) const { return m_vendors.at(folded).name; }

  private:
    struct Vendor {
        std::map<std::wstring, int> spellings;
        int most = 0;
        std::wstring name;
    };
    std::unordered_map<std::wstring, Vendor> m_vendors;
};

/// A folder that grows; its folders are found by their folded names.
struct Growing {
    FolderPlan plan;
    std::vector<Growing> folders;
    std::unordered_map<std::wstring, std::size_t> places;

    Growing& Folder(const std::wstring& name, const FoldText& fold) {
        const auto [place, isNew] = places.try_emplace(fold(name), folders.size());
        if (isNew) folders.emplace_back().plan.name = name;
        return folders[place->second];
    }
    FolderPlan Finished() && {
        for (Growing& folder : folders) plan.folders.push_back(std::move(folder).Finished());
        return std::move(plan);
    }
};

}  // namespace

FolderPlan PlanLayout(std::span<const StudioPlugin> plugins, const Guids& inLayout, FillOrder order,
                      const PlanTexts& texts) {
    const std::vector<std::size_t> lacking = FindLacking(plugins, inLayout, texts.fold);
    const FoldText& fold = texts.fold.text;
    const CVendors vendors(plugins, lacking, fold);
    Growing top;
    for (const std::size_t i : lacking) {
        const std::wstring caption = Trimmed(texts.captionOf(plugins[i].item.category));
        const std::wstring vendor = vendors.NameOf(ComparedText(plugins[i].vendor, fold));
        const bool byVendor = order == FillOrder::ByVendor && !vendor.empty();
        Growing& folder = top.Folder(byVendor ? vendor : caption, fold);
        const bool inside = order == FillOrder::ByCategoryThenVendor && !vendor.empty();
        (inside ? folder.Folder(vendor, fold) : folder).plan.plugins.push_back(i);
    }
    return std::move(top).Finished();
}

std::vector<std::size_t> OrderWithAdded(std::span<const SortItem> items, std::size_t present,
                                        const CompareNames& compare) {
    std::vector<std::size_t> order = SortedOrder(items.first(present), compare);
    if (std::ranges::is_sorted(order)) return SortedOrder(items, compare);
    std::ranges::sort(order);
    for (const std::size_t added : SortedOrder(items.subspan(present), compare))
        order.push_back(present + added);
    return order;
}
