#include <gtest/gtest.h>
#include <string>

#include "LayoutOrder.h"

namespace {

constexpr auto F = LayoutKind::Folder;
constexpr auto P = LayoutKind::Plugin;
constexpr SortItem kLine{LayoutKind::Separator, kSeparatorText};

std::wstring Sorted(const std::vector<SortItem>& items) {
    std::wstring names;
    for (const std::size_t index : SortedOrder(items, [](auto a, auto b) { return a.compare(b); })) {
        names += items[index].kind == LayoutKind::Separator ? L"-" : items[index].name;
    }
    return names;
}

TEST(LayoutOrder, FoldersComeFirstAndSeparatorsStayBehindTheirItem) {
    EXPECT_EQ(Sorted({}), L"");
    EXPECT_EQ(Sorted({{P, L"c"}, {F, L"z"}, {P, L"b"}, {F, L"y"}}), L"yzbc");
    EXPECT_EQ(Sorted({{P, L"c"}, kLine, {P, L"b"}, {P, L"a"}, kLine, kLine}), L"a--bc-");
    EXPECT_EQ(Sorted({{P, L"c"}, kLine, {F, L"z"}}), L"zc-");
    const SortItem same[] = {{P, L"a"}, {P, L"a"}, {P, L"a"}};
    EXPECT_EQ(SortedOrder(same, [](auto, auto) { return 0; }), (std::vector<std::size_t>{0, 1, 2}));
}

TEST(LayoutOrder, ASeparatorBehindNothingGoesByItsName) {
    EXPECT_EQ(Sorted({kLine, {P, L"b"}, {P, L"a"}}), L"-ab");
    EXPECT_EQ(Sorted({kLine, kLine, {P, L"b"}, {P, L"!a"}}), L"!a--b")
        << "a name may stand before the hyphens";
    EXPECT_EQ(Sorted({kLine, {P, L"!a"}, kLine, {F, L"z"}}), L"-z!a-");
}

TEST(LayoutItem, IdsTellTheKindAndNoTwoAreAlike) {
    EXPECT_TRUE(IsPluginId(NewPlugin().id) && IsFolderId(NewFolder(L"a").id) &&
                IsSeparatorId(NewSeparator().id));
    EXPECT_NE(NewPlugin().id, NewPlugin().id);
}

}  // namespace
