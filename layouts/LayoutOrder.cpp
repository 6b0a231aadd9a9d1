#include "LayoutOrder.h"

#include <algorithm>
#include <limits>

namespace {

constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

}  // namespace

std::vector<std::size_t> SortedOrder(std::span<const SortItem> children, const CompareNames& compare) {
    std::vector<std::size_t> items;
    std::vector<std::size_t> untied;
    std::vector<std::size_t> tiedTo(children.size(), kNone);
    std::size_t last = kNone;
    for (std::size_t i = 0; i < children.size(); ++i) {
        if (children[i].kind != LayoutKind::Separator) {
            items.push_back(last = i);
        } else if (last == kNone) {
            untied.push_back(i);
        } else {
            tiedTo[i] = last;
        }
    }
    std::ranges::stable_sort(items, [&](std::size_t a, std::size_t b) {
        if (children[a].kind != children[b].kind) return children[a].kind < children[b].kind;
        return compare(children[a].name, children[b].name) < 0;
    });
    for (const std::size_t separator : untied) {
        const auto behind = std::ranges::find_if(
            items, [&](std::size_t i) { return compare(children[separator].name, children[i].name) < 0; });
        items.insert(behind, separator);
    }
    std::vector<std::size_t> order;
    order.reserve(children.size());
    for (const std::size_t item : items) {
        order.push_back(item);
        if (children[item].kind == LayoutKind::Separator) continue;
        for (std::size_t next = item + 1; next < children.size() && tiedTo[next] == item; ++next)
            order.push_back(next);
    }
    return order;
}
