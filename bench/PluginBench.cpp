// Finding plug-ins, and what a user does with them, from the click to the end of what it leads to.
#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "Bare.h"
#include "BareLayout.h"
#include "Benches.h"
#include "ClsidText.h"
#include "Commands.h"
#include "FriendlyNames.h"
#include "Holdings.h"
#include "MainWindow.h"
#include "Measure.h"
#include "Studio.h"
#include "TextBytes.h"

namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::wstring>;

// Rows of the category list.
constexpr int kFilters = 0;
constexpr int kVstEffects = 1;

constexpr int kMost = 1000;  // that are excluded or added at a time

constexpr wchar_t kBareExclusions[] = L"Software\\Corvane Music Software\\Bench exclusions\\";

/// A dialog of the same controls, without anything behind them.
class CBareDialog : public CDialog {
  public:
    CBareDialog() : CDialog(IDD_PLUGIN_MANAGER) { CreateModeless(nullptr); }
    CListBox List() const { return Control<CListBox>(IDC_PLUGINS); }
    void Fill(const Texts& names) const {
        const CListBox list = List();
        list.Clear();
        const CRedrawLock noRedraw(list);
        list.Reserve(static_cast<int>(names.size()), 24);
        for (const std::wstring& name : names) list.SetData(list.Add(name), 1);
    }
    /// What changes beside the list when it shows VST plug-ins, or none any more.
    void ShowPanes(bool forVst) const {
        for (const int id : {IDC_PLUGINS_LABEL, IDC_CLSID_LABEL})
            Item(id).SetText(forVst ? L"VST (2 found)" : L"DX (1 found)");
        for (const int id : {IDC_VST_ID_LABEL, IDC_VST_ID, IDC_VENDOR, IDC_VST_GROUP, IDC_VST_OPTIONS,
                             IDC_VST_PROPERTIES, IDC_VST_SCAN})
            Item(id).Show(forVst);
        for (const int id : {IDC_CLSID, IDC_ADAPTER_GROUP, IDC_ADAPTER_WIZARD, IDC_ADAPTER_PROPERTIES})
            Item(id).Show(!forVst);
        for (const int id : {IDC_VST_ID_LABEL, IDC_VST_ID, IDC_VENDOR}) Item(id).Enable(forVst);
        Item(IDC_CLSID).Enable(!forVst);
    }
    void ShowMode(bool excluded) const {
        Item(IDC_PLUGINS_LABEL).SetText(excluded ? L"VST (none found)" : L"VST (2 found)");
        Item(IDC_EXCLUDE).SetText(excluded ? L"Enable" : L"Exclude");
        Item(IDC_SHOW_PERMANENT).Enable(excluded);
    }
    void SelectFirst(int rows) const {
        List().SelectAll(false);
        List().Send(LB_SELITEMRANGEEX, 0, rows - 1);
    }
};

/// In no order, as they come from the inventory.
Texts RowsOf(const CListBox& list) {
    Texts rows;
    for (int row = 0; row < list.Count(); ++row) rows.push_back(list.RowText(row));
    for (std::size_t row = 0; row < rows.size(); ++row) std::swap(rows[row], rows[row * 7919 % rows.size()]);
    return rows;
}

class CPluginBench {
  public:
    CPluginBench(const CPluginInventory& inventory, int plugins, const fs::path& folder)
        : m_inventory(inventory), m_plugins(plugins), m_window(folder) {
        m_window.Choose(kVstEffects);
        m_effects = RowsOf(m_window.Plugins());
        m_some = std::min(kMost, m_window.Plugins().Count());
        for (int row = 0; row < m_window.Plugins().Count(); ++row)
            m_clsids.push_back(ClsidText(m_window.Plugins().ItemOf<PluginListItem>(row)->clsid));
    }

    void Switch();
    void Find();
    void Select();
    void Add();
    void Exclude();
    void ListAnew();

  private:
    /// As many as are excluded at a time.
    Texts Some(const Texts& all) const { return {all.begin(), all.begin() + m_some}; }
    void SelectTen() const {
        constexpr int kLast = 9;
        for (int i = 0; i <= kLast; ++i)
            m_window.Plugins().Select((m_window.Plugins().Count() - 1) * i / kLast);
    }
    void AskFiles() const {
        for (int i = 0; i < m_some; ++i) ::GetFileAttributesW(BenchVstFile(i).c_str());
    }

    const CPluginInventory& m_inventory;
    const int m_plugins;
    mutable CMainWindow m_window;
    CBareDialog m_bare;
    Texts m_effects;
    Texts m_clsids;  // of the effects
    int m_some = 0;
};

void CPluginBench::Switch() {
    Row(
        "category switch", m_plugins, [&] { m_window.Choose(kVstEffects); },
        [&] {
            m_bare.Fill(m_effects);
            m_bare.ShowPanes(true);
        },
        [&] {
            m_window.Choose(kFilters);
            m_bare.ShowPanes(false);
        });
    m_window.Choose(kVstEffects);
    Row(
        "enabled ones shown again", m_plugins, [&] { m_window.Press(IDC_SHOW_ENABLED); },
        [&] {
            m_bare.Fill(m_effects);
            m_bare.ShowMode(false);
        },
        [&] {
            m_window.Press(IDC_SHOW_EXCLUDED);
            m_bare.ShowMode(true);
        });
    m_window.Press(IDC_SHOW_ENABLED);
}

/// Each key leaves all rows, ten of which are selected, as much as a key can have to do.
void CPluginBench::Find() {
    bool other = false;
    Row(
        "a key in the field Find", m_plugins, [&] { m_window.List().Find((other = !other) ? L"{" : L"}"); },
        [&] { m_bare.Fill(m_effects); }, [&] { SelectTen(); });
    m_window.List().Find(L"");
}

/// The presets of what is selected are counted.
void CPluginBench::Select() {
    m_bare.Fill(m_effects);
    const auto bench = [&](const char* name, int count) {
        Row(
            name, m_plugins, [&] { m_window.SelectFirst(count); },
            [&] {
                m_bare.SelectFirst(count);
                for (const int row : m_bare.List().SelectedRows()) {
                    const auto& clsid = m_clsids[static_cast<std::size_t>(row)];
                    const CBareKey key(HKEY_CURRENT_USER, std::wstring(kAudioPresetsKey) + L"\\" + clsid);
                    if (key.Handle()) key.ForValues([](const BYTE*, DWORD) {}, 0);
                }
                for (const int id : {IDC_FILENAME, IDC_VST_ID, IDC_VENDOR, IDC_PRESETS_GROUP})
                    m_bare.Item(id).SetText(m_clsids[0]);
            });
    };
    bench("select one", 1);
    bench("select all", m_window.Plugins().Count());
}

void CPluginBench::Add() {
    m_bare.Fill(m_effects);
    const CBareTree tree(m_window.Layout().Tree());
    Row(
        "add plug-ins", m_some, [&] { m_window.Press(IDC_ADD_PLUGIN); },
        [&] {
            const CRedrawLock noRedraw(tree);
            HTREEITEM last = TVI_FIRST;
            for (int row = 0; row < m_some; ++row)
                last = tree.Insert(nullptr, last, m_bare.List().RowText(row), 8, 8, row);
        },
        [&] {
            m_window.Layout().Clear();
            tree.Delete(TVI_ROOT);
            m_window.SelectFirst(m_some);
        });
    m_window.Layout().Clear();
}

/// Before, a plug-in whose file is gone is asked about; after, the exclusions are read and the list is
/// filled.
void CPluginBench::Exclude() {
    const Texts clsids = Some(m_clsids);
    const Texts left(m_effects.begin() + m_some, m_effects.end());
    const auto excludeBarely = [&] {
        for (const std::wstring& clsid : clsids) {
            HKEY key = nullptr;
            ::RegCreateKeyExW(HKEY_CURRENT_USER, (kBareExclusions + clsid).c_str(), 0, nullptr, 0,
                              KEY_ALL_ACCESS, nullptr, &key, nullptr);
            ::RegSetValueExW(key, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(clsid.c_str()),
                             static_cast<DWORD>((clsid.size() + 1) * sizeof(wchar_t)));
            ::RegCloseKey(key);
        }
    };
    const auto enableBarely = [&] {
        for (const std::wstring& clsid : clsids)
            ::RegDeleteKeyW(HKEY_CURRENT_USER, (kBareExclusions + clsid).c_str());
    };
    const auto readAnew = [&] {
        CBareKey(HKEY_CURRENT_USER, kBareExclusions).ForSubkeys([](const wchar_t*) {});
    };
    const auto toggle = [&](int shown) {
        m_window.Press(shown);
        m_window.SelectFirst(std::min(m_some, m_window.Plugins().Count()));
        m_window.Press(IDC_EXCLUDE);
    };
    const auto makeEnabled = [&] {
        toggle(IDC_SHOW_EXCLUDED);
        enableBarely();
        m_window.Press(IDC_SHOW_ENABLED);
        m_window.SelectFirst(m_some);
    };
    const auto makeExcluded = [&] {
        makeEnabled();
        toggle(IDC_SHOW_ENABLED);
        excludeBarely();
        m_window.Press(IDC_SHOW_EXCLUDED);
        m_window.SelectFirst(m_some);
    };
    Row(
        "exclude", m_some, [&] { m_window.Press(IDC_EXCLUDE); },
        [&] {
            AskFiles();
            excludeBarely();
            readAnew();
            m_bare.Fill(left);
        },
        makeEnabled);
    Row(
        "enable", m_some, [&] { m_window.Press(IDC_EXCLUDE); },
        [&] {
            AskFiles();
            enableBarely();
            readAnew();
            m_bare.Fill({});
        },
        makeExcluded);
    makeEnabled();
}

/// As after a scan, with rows selected and plug-ins in the layout.
void CPluginBench::ListAnew() {
    m_window.SelectFirst(m_some);
    m_window.Press(IDC_ADD_PLUGIN);
    Row(
        "found anew after a scan", m_plugins,
        [&] {
            CFriendlyNames::CorrectWrapped(m_inventory);
            const auto rows = CRememberedRows::Of(m_window.Plugins());
            m_window.List().EnumeratePlugins();
            m_window.List().Refill(rows);
        },
        [&] {
            BareEnumeration();
            m_bare.Fill(m_effects);
        },
        [&] {
            m_window.Plugins().SelectAll(false);
            SelectTen();
        });
}

void CountCalls(int plugins) {
    CountRegistryCalls();
    CVstInventory vst(kDefaultVstKey);
    const int before = RegistryCalls();
    vst.Read({}, true);
    const int calls = RegistryCalls() - before;
    Figure("calls to the registry for each VST entry, of " + std::to_string(plugins) + " plug-ins",
           calls / (plugins / 2.0), 14.1);
}

}  // namespace

void BenchPlugins(int plugins) {
    const CPluginDatabase noDatabase;
    CPluginInventory inventory(kDefaultVstKey, noDatabase);
    Row(
        "enumeration", plugins,
        [&] {
            inventory.ReadAdapterInventory();
            inventory.Enumerate(true);
        },
        [] { BareEnumeration(); });
    Row(
        "list --format json", plugins,
        [] { Utf8Of(ListText(RowsToList({}, CCmdStudio(L"").Plugins()), ListFormat::Json)); },
        [] { BareEnumeration(BareFiles::Read); });
    const fs::path folder = fs::temp_directory_path() / L"Plug-in bench";
    fs::create_directories(folder);
    {
        CPluginBench bench(inventory, plugins, folder);
        bench.Switch();
        bench.Find();
        bench.Select();
        bench.Add();
        bench.Exclude();
        bench.ListAnew();
    }
    fs::remove_all(folder);
    CountCalls(plugins);
}

void BenchWrapped() {
    for (const int wrapped : {125, 250, 500, 1000}) {
        GrowWrapped(wrapped);
        const CPluginDatabase noDatabase;
        CPluginInventory inventory(kDefaultVstKey, noDatabase);
        inventory.ReadAdapterInventory();
        inventory.Enumerate(true);
        Texts keys;
        for (const PluginEntry& entry : inventory.Entries()) {
            if (entry.category && IsLegacyWrapped(*entry.category))
                keys.push_back(L"CLSID\\" + ClsidText(entry.clsid));
        }
        Row(
            "names of wrapped plug-ins", static_cast<int>(keys.size()),
            [&] { CFriendlyNames::CorrectWrapped(inventory); },
            [&] {
                for (const std::wstring& path : keys) CBareKey(HKEY_CLASSES_ROOT, path).Ask(nullptr);
            });
    }
}
