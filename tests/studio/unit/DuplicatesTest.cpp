#include <gtest/gtest.h>

#include "studio/StudioPlugins.h"

namespace {

using enum Category;
using support::StudioPlugins;

std::string DuplicatesIn(const StudioPlugins& studio) {
    std::string found;
    const auto isThere = [&](std::size_t i) { return studio[i].file != L"gone"; };
    for (const auto& [plugin, original, kind] : FindDuplicates(studio, isThere, support::kFolds)) {
        constexpr const char* kKinds[] = {"=vst3 ", "=file ", "~"};
        found += std::to_string(plugin) + kKinds[static_cast<int>(kind)] + std::to_string(original) + ' ';
    }
    return found;
}

TEST(Duplicates, AVstIsOneOfTheVst3OfItsVendorNameAndSideThatIsLeft) {
    StudioPlugins studio;
    studio.Add(VstEffects, L" Écho ", L"Oskeda");
    studio.Add(Vst3Effects, L"echo", L"OSKEDA ");
    studio.Add(VstInstruments, L"Echo", L"Oskeda");
    studio.Add(VstEffects, L"Echo");
    studio.Add(VstEffects, L"Echo", L"Oskeda").excluded = true;
    EXPECT_EQ(DuplicatesIn(studio), "0=vst3 1 ");
    studio.Add(VstInstruments, L"Organ", L"Oskeda");
    studio.Add(Vst3Instruments, L"Organ", L"Oskeda", L"gone");
    studio.Add(Vst3Instruments, L"Organ", L"Oskeda").excluded = true;
    EXPECT_EQ(DuplicatesIn(studio), "0=vst3 1 ") << "no VST goes for one that the user does without";
}

TEST(Duplicates, TheSameFileAndNameTwiceAndWhatOnlyLooksAlike) {
    StudioPlugins studio;
    studio.Add(VstEffects, L"Twice", L"", L"C:\\Vst\\a.dll").uniqueId = 7;
    studio.Add(VstEffects, L"twice", L"", L"c:\\vst\\A.DLL").uniqueId = 7;
    studio.Add(VstEffects, L"Twice", L"", L"C:\\Vst\\a.dll").uniqueId = 8;
    studio.Add(VstEffects, L"", L"Maker", L"C:\\Vst\\a.dll");
    studio.Add(VstEffects, L"", L"Maker", L"C:\\Vst\\a.dll");
    studio.Add(VstEffects, L"Élan", L"", L"Élan.dll");
    studio.Add(VstEffects, L"Elan", L"", L"elan.dll");
    EXPECT_EQ(DuplicatesIn(studio), "1=file 0 ") << "with the accent it is another file";
    const Guid clsid = studio.Add(DirectXEffects, L"Plate", L"", L"p.dll").item.clsid;
    studio.Add(DirectXEffects, L"Plate", L"", L"p.dll").item.clsid = clsid;
    EXPECT_EQ(DuplicatesIn(studio), "1=file 0 ") << "registrations of one class go together";
    studio.Add(Vst3Effects, L"Colander", L"Pelimond", L"1\\c.vst3");
    const Guid shared = studio.Add(Vst3Effects, L"Colander", L"Pelimond", L"2\\c.vst3").item.clsid;
    studio.Add(Vst3Effects, L"Colander", L"Pelimond", L"2\\C.vst3");
    studio.Add(Vst3Effects, L"Colander", L"Pelimond", L"3\\c.vst3").permanent = true;
    EXPECT_EQ(DuplicatesIn(studio), "1=file 0 10~9 11=file 10 ");
    studio[11].item = {.clsid = shared, .md5Clsid = {99, 0, 0, {}}, .category = Vst3Effects};
    EXPECT_EQ(DuplicatesIn(studio), "1=file 0 10~9 11~9 ") << "neither can be excluded alone";
}

}  // namespace
