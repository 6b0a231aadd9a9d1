#include <gtest/gtest.h>

#include "Classification.h"
#include "RegisteredFile.h"

namespace {

TEST(Classification, InventoryEntriesGoByTheirFlags) {
    EXPECT_EQ(ClassifyPluginCategory({.isVst = true}), Category::VstEffects);
    EXPECT_EQ(ClassifyPluginCategory({.isVst = true, .registerAsSynth = true}), Category::VstInstruments);
    EXPECT_EQ(ClassifyPluginCategory({.isVst3 = true}), Category::Vst3Effects);
    EXPECT_EQ(ClassifyPluginCategory({.isVst3 = true, .registerAsSynth = true}), Category::Vst3Instruments);
    EXPECT_EQ(ClassifyPluginCategory({.isVst = true, .isVst3 = true}), Category::VstEffects);
}

TEST(RegisteredFile, QuotesAndBareNamesAreResolvedAndNothingElse) {
    for (const auto& [path, file] : {std::pair(LR"(C:\a b\fx.dll)", LR"(C:\a b\fx.dll)"),
                                     {LR"("C:\a b\fx.dll)", LR"(C:\a b\fx.dll)"},
                                     {LR"("C:\a b\fx.dll" /x)", LR"(C:\a b\fx.dll)"},
                                     {LR"("fx.dll")", LR"(C:\system\fx.dll)"},
                                     {LR"(sub\fx.dll)", LR"(sub\fx.dll)"},
                                     {L"C:fx.dll", L"C:fx.dll"},
                                     {L"\"", L""},
                                     {L"", L""}})
        EXPECT_EQ(RegisteredFile(path, LR"(C:\system)"), file);
}

}  // namespace
