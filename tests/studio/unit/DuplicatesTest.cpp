#include <algorithm>
#include <gtest/gtest.h>

#include "Duplicates.h"

namespace {

using enum Category;
using enum DuplicateKind;

/// Plug-ins that are found in this order; each has a class id of its own.
class Collection {
  public:
    StudioPlugin& Add(Category category, const wchar_t* name, const wchar_t* vendor, const wchar_t* file) {
        const auto number = static_cast<std::uint32_t>(m_plugins.size() + 1);
        StudioPlugin plugin{.item = {}, .name = name, .vendor = vendor, .file = file};
        plugin.item.category = category;
        plugin.item.clsid = {number, 0, 0, {}};
        return m_plugins.emplace_back(plugin);
    }
    std::string Duplicates() const {
        const auto fold = [](std::wstring text) {
            std::ranges::transform(text, text.begin(), [](wchar_t c) { return c == L'É' ? L'e' : c | 0x20; });
            return text;
        };
        std::string found;
        for (const Duplicate& each : FindDuplicates(
                 m_plugins, [this](std::size_t i) { return m_plugins[i].file != L"gone"; }, fold)) {
            found += std::to_string(each.plugin) +
                     (each.kind == AlsoVst3    ? "=vst3 "
                      : each.kind == SameTwice ? "=file "
                                               : "~") +
                     std::to_string(each.original) + ' ';
        }
        return found;
    }

  private:
    std::vector<StudioPlugin> m_plugins;
};

TEST(Duplicates, AVstIsOneOfTheVst3OfItsVendorNameAndSideThatIsLeft) {
    Collection studio;
    studio.Add(VstEffects, L" Écho ", L"Oskeda", L"a.dll");
    studio.Add(Vst3Effects, L"echo", L"OSKEDA ", L"a.vst3");
    studio.Add(VstInstruments, L"Echo", L"Oskeda", L"i.dll");
    studio.Add(VstEffects, L"Echo", L"", L"b.dll");
    studio.Add(VstEffects, L"Echo", L"Oskeda", L"c.dll").excluded = true;
    EXPECT_EQ(studio.Duplicates(), "0=vst3 1 ");
    studio.Add(VstInstruments, L"Organ", L"Oskeda", L"o.dll");
    studio.Add(Vst3Instruments, L"Organ", L"Oskeda", L"gone");
    studio.Add(Vst3Instruments, L"Organ", L"Oskeda", L"o.vst3").excluded = true;
    EXPECT_EQ(studio.Duplicates(), "0=vst3 1 ") << "no VST goes for one that the user does without";
}

TEST(Duplicates, TheSameFileAndNameTwiceAndWhatOnlyLooksAlike) {
    Collection studio;
    studio.Add(VstEffects, L"Twice", L"", L"C:\\Vst\\a.dll").uniqueId = 7;
    studio.Add(VstEffects, L"twice", L"", L"c:\\vst\\A.DLL").uniqueId = 7;
    studio.Add(VstEffects, L"Twice", L"", L"C:\\Vst\\a.dll").uniqueId = 8;
    studio.Add(VstEffects, L"", L"Maker", L"C:\\Vst\\a.dll");
    studio.Add(VstEffects, L"", L"Maker", L"C:\\Vst\\a.dll");
    EXPECT_EQ(studio.Duplicates(), "1=file 0 ");
    const Guid clsid = studio.Add(DirectXEffects, L"Plate", L"", L"p.dll").item.clsid;
    studio.Add(DirectXEffects, L"Plate", L"", L"p.dll").item.clsid = clsid;
    EXPECT_EQ(studio.Duplicates(), "1=file 0 ") << "registrations of one class go together";
    studio.Add(Vst3Effects, L"Colander", L"Pelimond", L"1\\c.vst3");
    studio.Add(Vst3Effects, L"Colander", L"Pelimond", L"2\\c.vst3");
    studio.Add(Vst3Effects, L"Colander", L"Pelimond", L"2\\C.vst3");
    studio.Add(Vst3Effects, L"Colander", L"Pelimond", L"3\\c.vst3").permanent = true;
    EXPECT_EQ(studio.Duplicates(), "1=file 0 8~7 9=file 8 ");
}

}  // namespace
