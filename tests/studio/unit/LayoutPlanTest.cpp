#include <gtest/gtest.h>

#include "LayoutPlan.h"
#include "studio/StudioPlugins.h"

namespace {

using enum Category;
using support::StudioPlugins;

std::wstring Text(const FolderPlan& plan) {
    std::wstring text;
    for (const FolderPlan& folder : plan.folders) text += folder.name + L"(" + Text(folder) + L")";
    for (const std::size_t i : plan.plugins) text += std::to_wstring(i);
    return text;
}

std::wstring Planned(const StudioPlugins& studio, FillOrder order,
                     const std::unordered_set<Guid, GuidHash>& inLayout = {}) {
    const auto caption = [](Category category) {
        return category == DirectXEffects ? std::wstring(L"DX ") : L"C" + std::to_wstring(int(category));
    };
    return Text(PlanLayout(studio, inLayout, order, {caption, support::kFolds}));
}

TEST(LayoutPlan, VendorsMergeUnderTheirCommonestSpelling) {
    StudioPlugins studio;
    for (const wchar_t* vendor : {L"OSKEDA", L"Oskeda", L" Oskeda ", L"PÉL", L"pel", L""})
        studio.Add(VstEffects, L"a", vendor);
    studio.Add(Vst3Instruments, L"a", L"pel");
    studio.Add(DirectXEffects, L"a");
    EXPECT_EQ(Planned(studio, FillOrder::ByVendor), L"Oskeda(012)pel(346)C1(5)DX(7)");
    EXPECT_EQ(Planned(studio, FillOrder::ByCategory), L"C1(012345)C10(6)DX(7)");
    EXPECT_EQ(Planned(studio, FillOrder::ByCategoryThenVendor), L"C1(Oskeda(012)pel(34)5)C10(pel(6))DX(7)");
    studio.pop_back();
    studio.resize(4);
    studio.Add(VstEffects, L"b", L"pel");
    EXPECT_EQ(Planned(studio, FillOrder::ByVendor), L"Oskeda(012)PÉL(34)") << "the first of two";
}

TEST(LayoutPlan, OnlyWhatIsEnabledFitsALayoutAndIsNotInItYet) {
    StudioPlugins studio;
    studio.Add(VstEffects, L"excluded").excluded = true;
    studio.Add(VstEffects, L"permanent").permanent = true;
    for (const Category category : {ControlSurfaces, LegacyVstEffects, LegacyVstInstruments, MidiEffects})
        studio.Add(category, L"a");
    studio.Add(Vst3Effects, L"b", L"", L"b.vst3").item.md5Clsid = {70, 0, 0, {}};
    studio.Add(Vst3Effects, L"B ", L"", L"B.VST3");
    studio.Add(Vst3Effects, L"other", L"", L"b.vst3");
    studio.Add(DirectXEffects, L"one").item.clsid = {80, 0, 0, {}};
    studio.Add(DirectXEffects, L"same class").item.clsid = {80, 0, 0, {}};
    EXPECT_EQ(Planned(studio, FillOrder::ByCategory), L"C4(5)C9(68)DX(9)");
    for (const std::uint32_t id : {70U, 7U})
        EXPECT_EQ(Planned(studio, FillOrder::ByCategory, {Guid{id, 0, 0, {}}}), L"C4(5)C9(8)DX(9)") << id;
}

TEST(LayoutPlan, WhatIsAddedIsSortedInUnlessTheUserSortedOtherwise) {
    const auto order = [](std::vector<SortItem> items, std::size_t present) {
        std::string text;
        const auto compare = [](std::wstring_view a, std::wstring_view b) { return a.compare(b); };
        for (const std::size_t i : OrderWithAdded(items, present, compare)) text += std::to_string(i);
        return text;
    };
    constexpr auto P = LayoutKind::Plugin;
    const SortItem a{P, L"a"}, b{P, L"b"}, c{P, L"c"}, d{P, L"d"}, folder{LayoutKind::Folder, L"z"},
        line{LayoutKind::Separator, kSeparatorText};
    EXPECT_EQ(order({b, line, d, c, a, folder}, 3), "540132");
    EXPECT_EQ(order({d, b, c, a, folder}, 2), "01432");
    EXPECT_EQ(order({c, a}, 0), "10");
}

}  // namespace
