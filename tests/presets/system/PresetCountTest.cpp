#include <gtest/gtest.h>

#include "PresetListMgr.h"
#include "support/RegistrySandbox.h"

namespace {

constexpr Guid kPlugin = "{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}"_guid;
constexpr wchar_t kPluginText[] = L"\\{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}";

unsigned Count(const Guid& category) { return CPresetListMgr(kPlugin, category, L"Hall").CountPresets(); }

TEST(PresetCount, EachCategoryCountsInItsRoot) {
    const support::RegistrySandbox sandbox;
    const struct {
        const wchar_t* root;
        std::vector<Guid> categories;
    } roots[] = {
        {L"SOFTWARE\\Corvane Music Software\\ActiveMovie\\Presets",
         {"{083863F1-70DE-11D0-BD40-00A0C911CE86}"_guid, "{A21768E5-211E-4A57-98D6-F32D57061A1A}"_guid,
          "{8D3D44A4-FB4A-4E34-AF6D-910531720233}"_guid}},
        {L"SOFTWARE\\Corvane Music Software\\MIDI Filters\\Presets",
         {"{EA928480-B8A3-43C0-8FA0-CCAD36569849}"_guid}},
        {L"SOFTWARE\\Corvane Music Software\\ControlSurfaces\\Presets",
         {"{E26F299E-B4BC-49E6-99BF-275210DDC844}"_guid}},
    };
    unsigned presets = 0;
    for (const auto& root : roots) {
        for (const Guid& category : root.categories) EXPECT_EQ(Count(category), 0U);
        ++presets;
        for (unsigned i = 0; i < presets; ++i) {
            support::SetRaw(HKEY_CURRENT_USER, std::wstring(root.root) + kPluginText,
                            std::to_wstring(i).c_str(), REG_BINARY, {1, 2, 3});
        }
        for (const Guid& category : root.categories) EXPECT_EQ(Count(category), presets);
    }
    EXPECT_EQ(Count("{00000000-0000-0000-0000-00000000000A}"_guid), 0U) << "a category without a store";
}

TEST(PresetCount, CountsEveryTypeAndPassesOverNamesThatAreTooLong) {
    const support::RegistrySandbox sandbox;
    const std::wstring key =
        std::wstring(L"SOFTWARE\\Corvane Music Software\\ActiveMovie\\Presets") + kPluginText;
    support::SetText(HKEY_CURRENT_USER, key, L"in a file", L"C:\\Presets\\in a file");
    support::SetDword(HKEY_CURRENT_USER, key, L"a number", 1);
    support::SetRaw(HKEY_CURRENT_USER, key, std::wstring(519, L'n').c_str(), REG_BINARY, {});
    support::SetRaw(HKEY_CURRENT_USER, key, std::wstring(520, L'n').c_str(), REG_BINARY, {});
    support::SetRaw(HKEY_CURRENT_USER, key, L"zzz, after the long one", REG_BINARY, {});
    EXPECT_EQ(Count("{083863F1-70DE-11D0-BD40-00A0C911CE86}"_guid), 4U);
}

}  // namespace
