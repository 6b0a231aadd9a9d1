#include <gtest/gtest.h>

#include "ExclusionPlan.h"
#include "IdList.h"
#include "studio/StudioPlugins.h"

namespace {

constexpr Guid kOne = "{11111111-2222-3333-4444-555555555555}"_guid;
constexpr Guid kTwo = "{ABCDEF01-2222-3333-4444-555555555555}"_guid;

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
    };
    for (const auto& [text, number, line] : kBad) {
        const auto ids = ReadIdList(text);
        ASSERT_TRUE(std::holds_alternative<BadIdLine>(ids)) << testing::PrintToString(text);
        EXPECT_EQ(std::get<1>(ids).number, number);
        EXPECT_EQ(std::get<1>(ids).text, line);
    }
}

std::string Fates(const std::vector<ExclusionLine>& lines) {
    constexpr const char* kFates[] = {"changed ",   "already ",        "unknown ",
                                      "permanent ", "not excludable ", "no room "};
    std::string fates;
    for (const ExclusionLine& line : lines) fates += kFates[static_cast<int>(line.fate)];
    return fates;
}

TEST(ExclusionPlan, TakesAVst3ByEitherIdAndRefusesWhatCannotBe) {
    support::StudioPlugins plugins;
    const Guid vst3 = plugins.Add(Category::Vst3Effects, L"a").item.clsid;
    const Guid midi = plugins.Add(Category::MidiEffects, L"b").item.clsid;
    const Guid always = plugins.Add(Category::DirectXEffects, L"c").item.clsid;
    plugins[0].item.md5Clsid = kOne;
    plugins[2].permanent = true;
    std::vector<Guid> excluded;
    const auto plan = [&](std::vector<Guid> ids, bool exclude, std::size_t count) {
        return PlanExclusions(
            ids, exclude,
            {plugins, [&](const Guid& id) { return std::ranges::find(excluded, id) != excluded.end(); },
             count});
    };
    const auto lines = plan({kOne, vst3, midi, always, Guid{}, kOne}, true, 4094);
    EXPECT_EQ(Fates(lines), "changed not excludable permanent unknown ");
    EXPECT_EQ(lines[0].clsid, vst3);
    EXPECT_EQ(lines[0].changes, (std::vector{vst3, kOne}));
    EXPECT_EQ(Fates(plan({vst3}, true, 4095)), "no room ") << "not under one of its ids alone";
    EXPECT_EQ(Fates(plan({vst3}, false, 4096)), "already ");
    excluded = {kOne};
    EXPECT_EQ(plan({vst3}, true, 4095)[0].changes, std::vector{vst3});
    EXPECT_EQ(plan({vst3}, false, 5000)[0].changes, std::vector{kOne});
    excluded = {vst3, kOne};
    EXPECT_EQ(Fates(plan({kOne}, true, 2)), "already ");
}

}  // namespace
