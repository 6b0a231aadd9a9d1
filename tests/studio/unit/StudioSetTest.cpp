#include <gtest/gtest.h>

#include "AsciiCase.h"
#include "StudioSet.h"

namespace {

using enum SetChange;

constexpr Guid Id(unsigned number) { return {number, 1, 2, {}}; }
constexpr Guid kPermanent = "{52B63860-DC93-11CE-A099-00AA00479A58}"_guid;

/// Excluded are 1 and 3; installed are 1, 2 and 5, the last of which is a VST called "Hall" with the MD5 id
/// 105, of which there may be copies.
StudioPresent Present() {
    StudioPresent present;
    present.exclusions = {{Id(1), L"one"}, {Id(3), L"three"}, {kPermanent, L"always"}};
    present.isInstalled = [](const Guid& id) { return id == Id(1) || id == Id(2) || id == Id(5); };
    present.find = [](const StudioSet::PluginName& name) -> std::optional<StudioPresent::Named> {
        if (name.clsid != Id(5)) return std::nullopt;
        return StudioPresent::Named{Id(105), name.md5Clsid == Id(105), L"Hall"};
    };
    present.hasLayoutFolder = true;
    present.inCapitals = [](std::wstring name) {
        std::ranges::transform(name, name.begin(), [](wchar_t c) { return c >= L'a' ? c - 32 : c; });
        return name;
    };
    present.layoutFiles = {L"SAME.PGL",  L"MIX.PGL",       L"MIX (2).PGL",
                           L"TWICE.PGL", L"TWICE (2).PGL", L"BAD.PGL"};
    present.layoutOf = [](const std::wstring& file) -> std::optional<std::wstring> {
        if (file == L"bad.pgl") return std::nullopt;
        return file == L"twice (2).pgl" ? L"<twice/>" : L"<same/>";
    };
    return present;
}

/// The change of each entry, with what tells it from others; "!" behind those that are chosen.
std::wstring Changes(const StudioSet& set, SetMode mode = SetMode::Add,
                     const StudioPresent& present = Present()) {
    constexpr const wchar_t* kWords[] = {L"new", L"differs", L"same", L"surplus", L"absent", L"homeless"};
    std::wstring text;
    for (const SetEntry& entry : DiffOf(set, present, mode)) {
        if (set.exclusions.empty() && entry.change == Surplus) continue;  // not what is looked at
        text += kWords[static_cast<std::size_t>(entry.change)] + (L" " + entry.name);
        if (!entry.target.empty()) text += L">" + entry.target;
        text += entry.chosen ? L"!," : L",";
    }
    return text;
}

TEST(StudioSet, ExclusionsAreAddedAndTakenAwayOnlyToMakeTheSame) {
    const StudioSet set{.exclusions = {{Id(1), L"a"}, {Id(2), L"b"}, {Id(9), L"c"}, {kPermanent, L"p"}}};
    EXPECT_EQ(Changes(set), L"same a,new b!,new c!,surplus three,");
    EXPECT_EQ(Changes(set, SetMode::Same), L"same a,new b!,new c!,surplus three!,");
    const auto entries = DiffOf(set, Present(), SetMode::Same);
    EXPECT_TRUE(entries[1].installed);
    EXPECT_FALSE(entries[2].installed);
    EXPECT_EQ(ExclusionsAfter(entries, 2), 3U);
}

TEST(StudioSet, OfSeveralNamesForOnePluginOneIsMeant) {
    const StudioSet::PluginName copy{Id(5), Id(7), L"Copy"}, other{Id(5), Id(8), L"Other"};
    EXPECT_EQ(Changes({.names = {copy, other, {Id(6), Id(6), L"No"}}}),
              L"differs Copy!,absent Other,absent No,");
    EXPECT_EQ(Changes({.names = {copy, {Id(5), Id(105), L"Hall"}}}), L"absent Copy,same Hall,");
}

TEST(StudioSet, ALayoutNeverTakesTheFileOfAnother) {
    const StudioSet set{.layouts = {{L"same.pgl", L"<same/>"},
                                    {L"new.pgl", L"<new/>"},
                                    {L"mix.pgl", L"<mix/>"},
                                    {L"Mix (3).pgl", L"<third/>"},
                                    {L"twice.pgl", L"<twice/>"},
                                    {L"bad.pgl", L"<bad/>"}}};
    EXPECT_EQ(Changes(set),
              L"same same.pgl>same.pgl,new new.pgl>new.pgl!,differs mix.pgl>mix (3).pgl!,"
              L"differs Mix (3).pgl>Mix (3) (2).pgl!,same twice.pgl>twice (2).pgl,"
              L"differs bad.pgl>bad (2).pgl!,");
    StudioPresent homeless = Present();
    homeless.hasLayoutFolder = false;
    EXPECT_EQ(Changes({.layouts = {{L"a.pgl", L"<a/>"}}}, SetMode::Add, homeless), L"homeless a.pgl,");
}

TEST(StudioSet, NamesOfLayoutFilesStayInTheFolder) {
    EXPECT_TRUE(IsLayoutFileName(L"My Layout.PGL"));
    for (const wchar_t* name : {L"", L".pgl", L"a.xml", L"..\\a.pgl", L"a/b.pgl", L"C:a.pgl", L"a.pgl:b.pgl",
                                L"nul.pgl", L"a.pgl.", L"a*.pgl", L"a\n.pgl"})
        EXPECT_FALSE(IsLayoutFileName(name)) << testing::PrintToString(std::wstring(name));
}

}  // namespace
