#include <gtest/gtest.h>
#include <set>
#include <span>

#include "ButtonRules.h"
#include "Classification.h"
#include "PermanentExclusions.h"
#include "PluginCategory.h"
#include "RegisteredFile.h"
#include "VisibilityRule.h"

namespace {

TEST(VisibilityRule, AllSixteenCases) {
    using enum VisibilityMode;
    // The four columns: plain, excluded, permanent, permanent and excluded.
    const struct {
        Visibility visibility;
        bool plain, excluded, permanent, both;
    } rows[] = {
        {{Enabled, false}, true, false, false, false},
        {{Enabled, true}, true, false, false, false},
        {{Excluded, false}, false, true, false, false},
        {{Excluded, true}, false, true, true, true},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(IsListed(row.visibility, false, false), row.plain);
        EXPECT_EQ(IsListed(row.visibility, false, true), row.excluded);
        EXPECT_EQ(IsListed(row.visibility, true, false), row.permanent);
        EXPECT_EQ(IsListed(row.visibility, true, true), row.both);
    }
}

TEST(Classification, TheFirstMatchWins) {
    RegistrationFacts facts;
    EXPECT_EQ(ClassifyPluginCategory(facts), Category::DirectXEffects);
    facts.isControlSurface = true;
    EXPECT_EQ(ClassifyPluginCategory(facts), Category::ControlSurfaces);
    facts.isMidiFilter = true;
    EXPECT_EQ(ClassifyPluginCategory(facts), Category::MidiEffects);
    facts.markedSoftSynth = true;
    EXPECT_EQ(ClassifyPluginCategory(facts), Category::DirectXInstruments);
    facts.wrapsVstSynth = false;
    EXPECT_EQ(ClassifyPluginCategory(facts), Category::LegacyVstEffects);
    facts.wrapsVstSynth = true;
    EXPECT_EQ(ClassifyPluginCategory(facts), Category::LegacyVstInstruments);
    facts.answersAsDmo = true;
    EXPECT_EQ(ClassifyPluginCategory(facts), Category::MediaObjects);
}

TEST(Classification, InventoryEntriesGoByTheirFlags) {
    EXPECT_EQ(ClassifyPluginCategory({.isVst = true}), Category::VstEffects);
    EXPECT_EQ(ClassifyPluginCategory({.isVst = true, .registerAsSynth = true}), Category::VstInstruments);
    EXPECT_EQ(ClassifyPluginCategory({.isVst3 = true}), Category::Vst3Effects);
    EXPECT_EQ(ClassifyPluginCategory({.isVst3 = true, .registerAsSynth = true}), Category::Vst3Instruments);
    EXPECT_EQ(ClassifyPluginCategory({.isVst = true, .isVst3 = true}), Category::VstEffects);
}

TEST(PermanentExclusions, HoldTheirTableOnly) {
    EXPECT_TRUE(IsPermanentlyExcluded("{52B63860-DC93-11CE-A099-00AA00479A58}"_guid)) << "the first row";
    EXPECT_TRUE(IsPermanentlyExcluded("{D42D5FCC-AB16-4318-AA95-EDFEFC514AAF}"_guid)) << "the last row";
    EXPECT_FALSE(IsPermanentlyExcluded("{D42D5FCC-AB16-4318-AA95-EDFEFC514AA0}"_guid)) << "one digit off";
    EXPECT_FALSE(IsPermanentlyExcluded({}));
}

TEST(RegisteredFile, QuotesAndBareNamesAreResolvedAndNothingElse) {
    for (const auto& [path, file] : {std::pair(LR"(C:\a b\fx.dll)", LR"(C:\a b\fx.dll)"),
                                     {LR"("C:\a b\fx.dll")", LR"(C:\a b\fx.dll)"},
                                     {LR"("C:\a b\fx.dll)", LR"(C:\a b\fx.dll)"},
                                     {LR"("C:\a b\fx.dll" /x)", LR"(C:\a b\fx.dll)"},
                                     {L"fx.dll", LR"(C:\system\fx.dll)"},
                                     {LR"("fx.dll")", LR"(C:\system\fx.dll)"},
                                     {LR"(sub\fx.dll)", LR"(sub\fx.dll)"},
                                     {L"C:fx.dll", L"C:fx.dll"},
                                     {L"\"", L""},
                                     {L"", L""}})
        EXPECT_EQ(RegisteredFile(path, LR"(C:\system)"), file);
}

PaneState State(Category category, int rows, unsigned presets = 0) {
    return {.category = category,
            .mode = VisibilityMode::Enabled,
            .selectedRows = rows,
            .presets = presets,
            .scannerExists = true,
            .adapterProgramExists = true};
}

/// The buttons that can be used; one that is not in the table stays as it was.
std::set<int> Usable(std::span<const ButtonRule> rules, const PaneState& state) {
    std::set<int> ids;
    for (const ButtonRule& rule : rules) {
        if (rule.canBeUsed(state)) ids.insert(rule.id);
    }
    return ids;
}

TEST(ButtonRules, AfterAFill) {
    const auto usable = [](const PaneState& state) { return Usable(buttons::kAfterFill, state); };
    EXPECT_EQ(usable(State(Category::VstEffects, 0)), (std::set{IDC_VST_OPTIONS, IDC_VST_SCAN}));
    EXPECT_EQ(usable(State(Category::LegacyVstEffects, 1)),
              (std::set{IDC_ADAPTER_WIZARD, IDC_ADAPTER_PROPERTIES, IDC_EXCLUDE}));
    EXPECT_EQ(usable({.category = Category::Vst3Instruments, .selectedRows = 1}),
              (std::set{IDC_VST_PROPERTIES, IDC_EXCLUDE}))
        << "also without a scanner";
}

TEST(ButtonRules, AfterASelection) {
    const auto usable = [](const PaneState& state) { return Usable(buttons::kAfterSelection, state); };
    EXPECT_EQ(usable(State(Category::Vst3Effects, 1, 3)),
              (std::set{IDC_IMPORT, IDC_EXPORT, IDC_MANAGE, IDC_EXCLUDE, IDC_VST_PROPERTIES,
                        IDC_ADAPTER_PROPERTIES, IDC_ADD_PLUGIN}));
    EXPECT_EQ(usable(State(Category::Vst3Effects, 2, 3)),
              (std::set{IDC_IMPORT, IDC_EXPORT, IDC_EXCLUDE, IDC_ADD_PLUGIN}));
    EXPECT_EQ(usable(State(Category::MidiEffects, 1)),
              (std::set{IDC_IMPORT, IDC_ADAPTER_PROPERTIES, IDC_ADD_PLUGIN}));
    for (const Category c :
         {Category::ControlSurfaces, Category::LegacyVstEffects, Category::LegacyVstInstruments}) {
        EXPECT_FALSE(usable(State(c, 1)).contains(IDC_ADD_PLUGIN));
    }
    EXPECT_FALSE(usable({.mode = VisibilityMode::Excluded, .selectedRows = 1}).contains(IDC_ADD_PLUGIN));
}

}  // namespace
