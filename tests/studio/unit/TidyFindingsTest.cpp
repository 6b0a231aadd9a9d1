#include <gtest/gtest.h>

#include "TidyFindings.h"
#include "studio/StudioPlugins.h"

namespace {

using enum Category;
using enum FileState;
using support::StudioPlugins;

/// Reason, action and tick of each finding: "Gx0".
std::string Untidy(const StudioPlugins& studio, const std::vector<FileState>& states,
                   const std::vector<SharedLayoutItem>& layout = {}) {
    std::string found;
    for (const auto& [reason, action, ticked, index] : FindUntidy(studio, states, layout, support::kFolds)) {
        found += {"GO32~L"[static_cast<int>(reason)], "-rxt"[static_cast<int>(action)]};
        found += (ticked ? "" : "?") + std::to_string(index) + ' ';
    }
    return found;
}

TEST(TidyFindings, AMissingFileIsTickedWhereItsDriveIsThereAndSomethingCanBeDone) {
    StudioPlugins studio;
    for (const Category category : {VstEffects, Vst3Instruments, DirectXEffects, MediaObjects,
                                    LegacyVstEffects, MidiEffects, ControlSurfaces})
        studio.Add(category, L"a");
    EXPECT_EQ(Untidy(studio, std::vector(studio.size(), Gone)), "Gx0 Gx1 Gr2 Gr3 Gr4 G-?5 G-?6 ");
    EXPECT_EQ(Untidy(studio, std::vector(studio.size(), OutOfReach)), "Ox?0 Ox?1 Or?2 Or?3 Or?4 O-?5 O-?6 ");
    for (StudioPlugin& plugin : studio) plugin.excluded = true;
    EXPECT_EQ(Untidy(studio, std::vector(studio.size(), Gone)), "Gr2 Gr3 Gr4 G-?5 G-?6 ");
    for (StudioPlugin& plugin : studio) plugin.permanent = true;
    EXPECT_EQ(Untidy(studio, std::vector(studio.size(), Gone)), "");
    studio.assign(1, {});
    EXPECT_EQ(Untidy(studio, {OutOfReach}), "") << "no file is known";
}

TEST(TidyFindings, DuplicatesAndEntriesOfWhatIsMissing) {
    StudioPlugins studio;
    studio.Add(VstEffects, L"Echo", L"Oskeda");
    studio.Add(Vst3Effects, L"Echo", L"Oskeda").item.md5Clsid = {77, 0, 0, {}};
    studio.Add(MidiEffects, L"Note", L"", L"n.dll");
    studio.Add(MidiEffects, L"Note", L"", L"n.dll");
    studio.Add(DirectXEffects, L"Plate", L"", L"p.dll");
    studio.Add(DirectXEffects, L"Plate", L"", L"p.dll");
    for (const wchar_t* file : {L"1", L"2", L"3"}) studio.Add(VstEffects, L"Mill", L"Oskeda", file);
    std::vector states(studio.size(), There);
    EXPECT_EQ(Untidy(studio, states), "3x0 2x5 ~-?6 ~-?7 ~-?8 ");
    states[0] = states[6] = OutOfReach;
    states[1] = states[7] = Gone;
    std::vector<SharedLayoutItem> layout;
    for (const std::uint32_t id : {77U, 1U, 2U, 7U, 8U, 99U}) {
        LayoutItem item = NewPlugin();
        item.clsid = {id, 0, 0, {}};
        item.installed = id != 99;
        layout.push_back(std::make_shared<const LayoutItem>(item));
    }
    layout.push_back(std::make_shared<const LayoutItem>(NewFolder(L"F")));
    EXPECT_EQ(Untidy(studio, states, layout), "Ox?0 Gx1 2x5 Ox?6 Gx7 Lt0 Lt2 Lt4 Lt5 ")
        << "no VST goes for a VST3 that is gone, and no entry of a drive that is not there";
}

TEST(TidyFindings, AnIdOfAPluginThatStaysExcludesNone) {
    StudioPlugins studio;
    const Guid shared = studio.Add(Vst3Effects, L"a").item.clsid;
    studio.Add(Vst3Effects, L"a").item.clsid = shared;
    studio[0].item.md5Clsid = {50, 0, 0, {}};
    studio[1].item.md5Clsid = {51, 0, 0, {}};
    const auto count = [&](const std::vector<std::size_t>& chosen) {
        return ExclusionsOf(studio, chosen).size();
    };
    EXPECT_EQ(count({1}), 1U);
    EXPECT_EQ(ExclusionsOf(studio, {1})[0].clsid, studio[1].item.md5Clsid);
    EXPECT_EQ(count({0, 1}), 4U);
    studio[0].excluded = true;
    EXPECT_EQ(count({1}), 2U);
}

}  // namespace
