// What a user does in the program's dialog, from the click to the end of what it leads to.
#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "BareEnumeration.h"
#include "Benches.h"
#include "CallCount.h"
#include "ClsidText.h"
#include "FriendlyNames.h"
#include "MainWindow.h"
#include "Measure.h"
#include "Studio.h"

namespace {

namespace fs = std::filesystem;

// Rows of the category list.
constexpr int kFilters = 0;
constexpr int kVstEffects = 1;

constexpr wchar_t kBareExclusions[] = L"Software\\Corvane Music Software\\Bench exclusions";

/// A dialog of the same controls, without anything behind them.
class CBareDialog : public CDialog {
  public:
    CBareDialog() : CDialog(IDD_PLUGIN_MANAGER) { CreateModeless(nullptr); }
    CListBox List() const { return Control<CListBox>(IDC_PLUGINS); }
    /// What has to change beside the list when another category is shown.
    void ShowPanes() {
        m_other = !m_other;
        const std::wstring text = m_other ? L"This (2 found)" : L"That";
        for (const int id : {IDC_PLUGINS_LABEL, IDC_PRESETS_GROUP, IDC_FILENAME, IDC_CLSID_LABEL, IDC_CLSID,
                             IDC_VST_ID, IDC_VENDOR})
            Item(id).SetText(text);
        for (const int id : {IDC_CLSID, IDC_VST_ID_LABEL, IDC_VST_ID, IDC_VENDOR, IDC_VST_GROUP,
                             IDC_VST_OPTIONS, IDC_VST_PROPERTIES, IDC_VST_SCAN, IDC_ADAPTER_GROUP,
                             IDC_ADAPTER_WIZARD, IDC_ADAPTER_PROPERTIES})
            Item(id).Show(m_other);
        for (const int id : {IDC_IMPORT, IDC_EXPORT, IDC_MANAGE, IDC_ADD_PLUGIN, IDC_EXCLUDE, IDC_CLSID,
                             IDC_VST_ID, IDC_VENDOR})
            Item(id).Enable(m_other);
    }
    void Fill(const std::vector<std::wstring>& names) const {
        const CListBox list = List();
        list.Clear();
        const CRedrawLock noRedraw(list);
        list.Reserve(static_cast<int>(names.size()), 24);
        for (const std::wstring& name : names) list.SetData(list.Add(name), 1);
    }

  private:
    bool m_other = false;
};

std::vector<std::wstring> RowsOf(const CListBox& list) {
    std::vector<std::wstring> rows;
    rows.reserve(static_cast<std::size_t>(list.Count()));
    for (int row = 0; row < list.Count(); ++row) rows.push_back(list.RowText(row));
    // In no order, as they come from the inventory.
    for (std::size_t row = 0; row < rows.size(); ++row) std::swap(rows[row], rows[row * 7919 % rows.size()]);
    return rows;
}

std::vector<std::wstring> ClsidsOf(const CListBox& list, int count) {
    std::vector<std::wstring> clsids;
    clsids.reserve(static_cast<std::size_t>(count));
    for (int row = 0; row < count; ++row)
        clsids.push_back(ClsidText(list.ItemOf<PluginListItem>(row)->clsid));
    return clsids;
}

std::vector<std::wstring> FilesOf(const CPluginInventory& inventory) {
    std::vector<std::wstring> files;
    for (const auto& [clsid, record] : inventory.Vst().Records()) files.push_back(record.path);
    return files;
}

/// The key of the plug-in is opened, and its values are counted.
void BareCount(const std::wstring& clsid) {
    HKEY key = nullptr;
    if (::RegOpenKeyExW(HKEY_CURRENT_USER, (std::wstring(kAudioPresetsKey) + L"\\" + clsid).c_str(), 0,
                        KEY_READ, &key) != ERROR_SUCCESS)
        return;
    wchar_t name[520];
    DWORD length = 520;
    for (DWORD i = 0;
         ::RegEnumValueW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS; ++i)
        length = 520;
    ::RegCloseKey(key);
}

void BareExclude(const std::wstring& clsid, const std::wstring& name) {
    HKEY key = nullptr;
    ::RegCreateKeyExW(HKEY_CURRENT_USER, (std::wstring(kBareExclusions) + L"\\" + clsid).c_str(), 0, nullptr,
                      0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    ::RegSetValueExW(key, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(name.c_str()),
                     static_cast<DWORD>((name.size() + 1) * sizeof(wchar_t)));
    ::RegCloseKey(key);
}

void BareSubkeys(const wchar_t* path) {
    if (const auto key = CRegKey::Open(HKEY_CURRENT_USER, path)) key->SubkeyNames();
}

void SwitchRows(CMainWindow& window, CBareDialog& bare, int plugins) {
    window.Choose(kFilters);
    const auto filters = RowsOf(window.Plugins());
    window.Choose(kVstEffects);
    const auto effects = RowsOf(window.Plugins());
    Row(
        {.name = "category there and back", .size = plugins, .bound = kSortedBound},
        [&] {
            window.Choose(kFilters);
            window.Choose(kVstEffects);
        },
        [&] {
            bare.Fill(filters);
            bare.ShowPanes();
            bare.Fill(effects);
            bare.ShowPanes();
        });
    Row(
        {.name = "show excluded, and enabled", .size = plugins, .bound = kSortedBound},
        [&] {
            window.Press(IDC_SHOW_EXCLUDED);
            window.Press(IDC_SHOW_ENABLED);
        },
        [&] {
            bare.Fill({});
            bare.ShowPanes();
            bare.Fill(effects);
            bare.ShowPanes();
        });
}

void SelectRows(CMainWindow& window, CBareDialog& bare, int plugins) {
    window.Choose(kVstEffects);
    bare.Fill(RowsOf(window.Plugins()));
    const int rows = window.Plugins().Count();
    const auto clsids = ClsidsOf(window.Plugins(), rows);
    const auto select = [&](const char* name, int count) {
        Row(
            {.name = name, .size = plugins}, [&] { window.SelectFirst(count); },
            [&] {
                bare.List().SelectAll(false);
                bare.List().Send(LB_SELITEMRANGEEX, 0, count - 1);
                for (const int row : bare.List().SelectedRows())
                    BareCount(clsids[static_cast<std::size_t>(row)]);
                for (const int id : {IDC_FILENAME, IDC_VST_ID, IDC_VENDOR, IDC_PRESETS_GROUP})
                    bare.Item(id).SetText(clsids[0]);
            });
    };
    select("select one", 1);
    select("select all", rows);
}

void ExclusionRows(CMainWindow& window, CBareDialog& bare, const CPluginInventory& inventory) {
    constexpr int kMost = 1000;
    window.Choose(kVstEffects);
    const int count = std::min(kMost, window.Plugins().Count());
    const auto all = RowsOf(window.Plugins());
    auto left = all;
    left.resize(all.size() - static_cast<std::size_t>(count));
    const auto clsids = ClsidsOf(window.Plugins(), count);
    const auto files = FilesOf(inventory);
    const auto show = [&](int button) {
        window.Press(button);
        window.SelectFirst(std::min(count, window.Plugins().Count()));
    };
    const auto makeBare = [&] {
        for (const std::wstring& clsid : clsids) BareExclude(clsid, all[0]);
    };
    const auto enableAll = [&] {
        show(IDC_SHOW_EXCLUDED);
        window.Press(IDC_EXCLUDE);
        CRegKey::DeleteTree(HKEY_CURRENT_USER, kBareExclusions);
        show(IDC_SHOW_ENABLED);
    };
    const auto excludeAll = [&] {
        show(IDC_SHOW_ENABLED);
        window.Press(IDC_EXCLUDE);
        makeBare();
        show(IDC_SHOW_EXCLUDED);
    };
    const auto askFiles = [&] {
        for (std::size_t i = 0; i < clsids.size(); ++i) ::GetFileAttributesW(files[i].c_str());
    };
    Row(
        {.name = "exclude", .size = count, .runs = 3, .before = enableAll},
        [&] { window.Press(IDC_EXCLUDE); },
        [&] {
            askFiles();
            makeBare();
            BareSubkeys(kBareExclusions);
            bare.Fill(left);
        });
    Row(
        {.name = "enable", .size = count, .runs = 3, .before = excludeAll},
        [&] { window.Press(IDC_EXCLUDE); },
        [&] {
            askFiles();
            for (const std::wstring& clsid : clsids)
                CRegKey::DeleteTree(HKEY_CURRENT_USER, std::wstring(kBareExclusions) + L"\\" + clsid);
            BareSubkeys(kBareExclusions);
            bare.Fill({});
        });
    enableAll();
}

void ReenumerationRow(CMainWindow& window, CBareDialog& bare, const CPluginInventory& inventory,
                      int plugins) {
    window.Choose(kVstEffects);
    const auto effects = RowsOf(window.Plugins());
    window.SelectFirst(std::min(1000, window.Plugins().Count()));
    window.Press(IDC_ADD_PLUGIN);
    window.SelectFirst(1);
    Row(
        {.name = "found anew after a scan", .size = plugins, .bound = kSortedBound, .runs = 5},
        [&] {
            CFriendlyNames::CorrectWrapped(inventory);
            const auto rows = CRememberedRows::Of(window.Plugins());
            window.List().EnumeratePlugins();
            window.List().Refill(rows);
        },
        [&] {
            BareEnumeration();
            bare.Fill(effects);
        });
    window.Layout().Clear();
}

}  // namespace

void BenchDialog(int plugins) {
    const fs::path folder = fs::temp_directory_path() / L"Dialog bench";
    fs::create_directories(folder);
    {
        const CPluginDatabase noDatabase;
        CPluginInventory inventory(kDefaultVstKey, noDatabase);
        inventory.Enumerate(true);
        CMainWindow window(folder);
        CBareDialog bare;
        SwitchRows(window, bare, plugins);
        SelectRows(window, bare, plugins);
        ExclusionRows(window, bare, inventory);
        ReenumerationRow(window, bare, inventory, plugins);
    }
    fs::remove_all(folder);
}

void BenchWrapped() {
    for (const int wrapped : {125, 250, 500, 1000}) {
        GrowWrapped(wrapped);
        const CPluginDatabase noDatabase;
        CPluginInventory inventory(kDefaultVstKey, noDatabase);
        inventory.ReadAdapterInventory();
        inventory.Enumerate(true);
        std::vector<std::wstring> keys;
        for (const PluginEntry& entry : inventory.Entries()) {
            if (entry.category && IsLegacyWrapped(*entry.category))
                keys.push_back(L"CLSID\\" + ClsidText(entry.clsid));
        }
        Row(
            {.name = "names of wrapped plug-ins", .size = static_cast<int>(keys.size())},
            [&] { CFriendlyNames::CorrectWrapped(inventory); },
            [&] {
                for (const std::wstring& path : keys) {
                    HKEY key = nullptr;
                    ::RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ, &key);
                    BYTE name[256];
                    DWORD size = sizeof name;
                    ::RegQueryValueExW(key, nullptr, nullptr, nullptr, name, &size);
                    ::RegCloseKey(key);
                }
            });
    }
}

void CountCalls() {
    CountRegistryCalls();
    CVstInventory vst(kDefaultVstKey);
    const int before = RegistryCalls();
    vst.Read({}, true);
    const int calls = RegistryCalls() - before;
    const auto entries = CRegKey::Open(HKEY_CURRENT_USER, std::wstring(kDefaultVstKey) + L"\\Inventory");
    Figure("calls to the registry for each VST entry",
           static_cast<double>(calls) / static_cast<double>(entries->SubkeyNames().size()), 14.1);
}
