#include <algorithm>
#include <gtest/gtest.h>

#include "ExclusionPlan.h"
#include "IdList.h"

namespace {

constexpr Guid kOne = "{11111111-2222-3333-4444-555555555555}"_guid;
constexpr Guid kTwo = "{ABCDEF01-2222-3333-4444-555555555555}"_guid;
constexpr Guid kThree = "{33333333-2222-3333-4444-555555555555}"_guid;
constexpr Guid kFour = "{44444444-2222-3333-4444-555555555555}"_guid;

TEST(IdList, TakesLinesOrTheColumnOfCsv) {
    const std::wstring one = L"{11111111-2222-3333-4444-555555555555}";
    const std::wstring two = L"abcDEF01-2222-3333-4444-555555555555";
    const std::vector<Guid> both = {kOne, kTwo};
    const std::vector<std::wstring> texts = {
        one + L"\r\n# a comment\n\n \t" + two + L" ", L"# first\n" + one + L"\n" + two,
        L"name,clsid\r\n\"a\n,\"\"b\"," + one + L"\r\nc," + two + L"\r\n",
        L"#TYPE x\n\"clsid\",\"x\"\n\"" + one + L"\",\"#\"\n\"" + two + L"\",\n"};
    for (const std::wstring& text : texts) {
        const auto ids = ReadIdList(text);
        ASSERT_TRUE(std::holds_alternative<std::vector<Guid>>(ids)) << testing::PrintToString(text);
        EXPECT_EQ(std::get<0>(ids), both) << testing::PrintToString(text);
    }
    EXPECT_TRUE(std::get<0>(ReadIdList(L"")).empty());
    const std::tuple<std::wstring, std::size_t, std::wstring> kBad[] = {
        {L"x", 1, L"x"},
        {one + L"\n" + two + L"0", 2, two + L"0"},
        {L"clsid\n\"" + one + L"\"\n\"a\nb\"\n", 3, L"\"a"},
        {L"name,clsid\nx\n", 2, L"x"},
        {L"{11111111-2222-3333-4444-55555555555G}", 1, L"{11111111-2222-3333-4444-55555555555G}"},
        {L"{11111111-2222-3333-4444-555555555555", 1, L"{11111111-2222-3333-4444-555555555555"},
        {std::wstring(1, L'\0'), 1, std::wstring(1, L'\0')},
    };
    for (const auto& [text, number, line] : kBad) {
        const auto ids = ReadIdList(text);
        ASSERT_TRUE(std::holds_alternative<BadIdLine>(ids)) << testing::PrintToString(text);
        EXPECT_EQ(std::get<1>(ids).number, number);
        EXPECT_EQ(std::get<1>(ids).text, line);
    }
}

TEST(ExclusionPlan, TakesAVst3ByEitherIdAndRefusesWhatCannotBe) {
    const auto plugin = [](Category category, const Guid& clsid, const Guid& md5, bool permanent) {
        StudioPlugin made;
        made.item.category = category;
        made.item.clsid = clsid;
        made.item.md5Clsid = md5;
        made.permanent = permanent;
        return made;
    };
    const StudioPlugin plugins[] = {plugin(Category::Vst3Effects, kOne, kTwo, false),
                                    plugin(Category::MidiEffects, kThree, {}, false),
                                    plugin(Category::DirectXEffects, kFour, {}, true)};
    std::vector<Guid> excluded;
    const auto plan = [&](std::vector<Guid> ids, bool exclude, std::size_t count) {
        return PlanExclusions(
            ids, exclude,
            {plugins, [&](const Guid& id) { return std::ranges::find(excluded, id) != excluded.end(); },
             count});
    };
    const auto fates = [](const std::vector<ExclusionLine>& lines) {
        std::vector<ExclusionFate> all;
        all.reserve(lines.size());
        for (const ExclusionLine& line : lines) all.push_back(line.fate);
        return all;
    };
    using enum ExclusionFate;
    const auto lines = plan({kTwo, kOne, kThree, kFour, Guid{}, kTwo}, true, 4094);
    EXPECT_EQ(fates(lines), (std::vector{Changed, NotExcludable, Permanent, Unknown}));
    EXPECT_EQ(lines[0].clsid, kOne);
    EXPECT_EQ(lines[0].changes, (std::vector{kOne, kTwo}));
    EXPECT_EQ(fates(plan({kOne}, true, 4095)), std::vector{NoRoom}) << "not under one of its ids alone";
    EXPECT_EQ(fates(plan({kOne}, false, 4096)), std::vector{Already});
    excluded = {kTwo};
    EXPECT_EQ(plan({kOne}, true, 4095)[0].changes, std::vector{kOne});
    EXPECT_EQ(plan({kOne}, false, 5000)[0].changes, std::vector{kTwo});
    excluded = {kOne, kTwo};
    EXPECT_EQ(fates(plan({kTwo}, true, 2)), std::vector{Already});
}

}  // namespace
