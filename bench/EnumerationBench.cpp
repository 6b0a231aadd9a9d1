#include <windows.h>

#include <dmo.h>
#include <strmif.h>
#include <uuids.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ole2.h>
#include <string>
#include <vector>
#include <wrl/client.h>

#include "Benches.h"
#include "Commands.h"
#include "Dialog.h"
#include "ExclusionList.h"
#include "LayoutTreeView.h"
#include "Measure.h"
#include "PluginInventory.h"
#include "PluginListView.h"
#include "Studio.h"
#include "TextBytes.h"
#include "VstToolPaths.h"

using Microsoft::WRL::ComPtr;

namespace {

constexpr int kRuns = 7;
constexpr std::array kSizes = {500, 1000, 2000, 4000};

// The floor: the same questions to the system, each once, with nothing done to the answers.

HKEY BareOpen(HKEY root, const wchar_t* path, REGSAM access = KEY_READ) {
    HKEY key = nullptr;
    ::RegOpenKeyExW(root, path, 0, access, &key);
    return key;
}

template <typename TWork>
void BareSubkeys(HKEY key, TWork&& work) {
    std::array<wchar_t, 260> name;
    for (DWORD index = 0;; ++index) {
        DWORD length = name.size();
        if (::RegEnumKeyExW(key, index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS)
            return;
        work(name.data());
    }
}

template <std::size_t N>
void BareValues(HKEY parent, const wchar_t* subkey, REGSAM access,
                const std::array<const wchar_t*, N>& values) {
    const HKEY key = BareOpen(parent, subkey, access);
    std::array<BYTE, 520> data;
    for (const wchar_t* value : values) {
        DWORD size = data.size();
        ::RegQueryValueExW(key, value, nullptr, nullptr, data.data(), &size);
    }
    ::RegCloseKey(key);
}

void BareDmoName(const GUID& clsid) {
    std::array<wchar_t, 80> name;
    ::DMOGetName(clsid, name.data());
}

void BareKeyNames(HKEY root, const wchar_t* path, bool asPlugins) {
    const HKEY key = BareOpen(root, path);
    BareSubkeys(key, [asPlugins](const wchar_t* name) {
        GUID clsid{};
        ::CLSIDFromString(name, &clsid);
        if (asPlugins) BareDmoName(clsid);
    });
    ::RegCloseKey(key);
}

void BareFilters() {
    ComPtr<IFilterMapper2> mapper;
    ::CoCreateInstance(CLSID_FilterMapper2, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&mapper));
    const std::array<GUID, 2> audio = {MEDIATYPE_Audio, GUID{}};
    ComPtr<IEnumMoniker> enumerator;
    mapper->EnumMatchingFilters(&enumerator, 0, FALSE, 0, TRUE, 1, audio.data(), nullptr, nullptr, FALSE,
                                TRUE, 0, nullptr, nullptr, nullptr);
    std::vector<IMoniker*> monikers(kMaxEntries);
    ULONG count = 0;
    enumerator->Next(static_cast<ULONG>(monikers.size()), monikers.data(), &count);
    for (ULONG i = 0; i < count; ++i) {
        ComPtr<IMoniker> moniker;
        moniker.Attach(monikers[i]);
        ComPtr<IPropertyBag> bag;
        moniker->BindToStorage(nullptr, nullptr, IID_PPV_ARGS(&bag));
        GUID clsid{};
        for (const wchar_t* property : {L"FriendlyName", L"CLSID"}) {
            VARIANT value;
            ::VariantInit(&value);
            if (SUCCEEDED(bag->Read(property, &value, nullptr)) && value.vt == VT_BSTR && *property == L'C') {
                ::CLSIDFromString(value.bstrVal, &clsid);
            }
            ::VariantClear(&value);
        }
        BareDmoName(clsid);
    }
}

void BareMediaObjects() {
    ComPtr<IEnumDMO> enumerator;
    ::DMOEnum(DMOCATEGORY_AUDIO_EFFECT, DMO_ENUMF_INCLUDE_KEYED, 0, nullptr, 0, nullptr, &enumerator);
    std::vector<CLSID> clsids(kMaxEntries);
    std::vector<wchar_t*> names(kMaxEntries);
    DWORD count = 0;
    enumerator->Next(static_cast<DWORD>(clsids.size()), clsids.data(), names.data(), &count);
    for (DWORD i = 0; i < count; ++i) {
        ::CoTaskMemFree(names[i]);
        BareDmoName(clsids[i]);
    }
}

void BareMidiNames() {
    const HKEY key = BareOpen(HKEY_LOCAL_MACHINE, kMidiFiltersKey);
    BareSubkeys(key, [](const wchar_t* name) {
        GUID clsid{};
        ::CLSIDFromString(name, &clsid);
        wchar_t* userType = nullptr;
        ::OleRegGetUserType(clsid, USERCLASSTYPE_FULL, &userType);
        ::CoTaskMemFree(userType);
        BareDmoName(clsid);
    });
    ::RegCloseKey(key);
}

void BareControlSurfaces() {
    const HKEY key = BareOpen(HKEY_CLASSES_ROOT, kControlSurfacesKey);
    BareSubkeys(key, [key](const wchar_t* name) {
        BareValues(key, name, KEY_READ, std::array{L"Description"});
        GUID clsid{};
        ::CLSIDFromString(name, &clsid);
        BareDmoName(clsid);
    });
    ::RegCloseKey(key);
}

void BareInventory(HKEY root, const std::wstring& path, REGSAM access, const auto& values) {
    const HKEY key = BareOpen(root, path.c_str(), access);
    BareSubkeys(key, [&](const wchar_t* name) { BareValues(key, name, access, values); });
    ::RegCloseKey(key);
}

void BareEnumeration() {
    static constexpr std::array kAdapterValues = {L"clsidPlug", L"FullPath", L"isVst", L"registerAsSynth"};
    static constexpr std::array kVstValues = {
        L"isVst",    L"isVst3",    L"registerAsSynth", L"isShell",  L"isShellRoot", L"isBad", L"isX64",
        L"uniqueId", L"clsidPlug", L"clsidPlugMD5",    L"FullPath", L"FullName",    L"Vendor"};
    BareInventory(HKEY_LOCAL_MACHINE, std::wstring(kAdapterKey) + L"\\Inventory", KEY_READ, kAdapterValues);
    BareKeyNames(HKEY_CLASSES_ROOT, kSoftSynthsKey, false);
    BareFilters();
    BareMediaObjects();
    BareMidiNames();
    BareControlSurfaces();
    BareInventory(HKEY_CURRENT_USER, std::wstring(kDefaultVstKey) + L"\\Inventory", KEY_ALL_ACCESS,
                  kVstValues);
}

void FillBare(CListBox list, const std::vector<std::wstring>& names) {
    list.Clear();
    const CRedrawLock noRedraw(list);
    list.Reserve(static_cast<int>(names.size()), 24);
    for (const std::wstring& name : names) list.SetData(list.Add(name), 1);
}

/// The first rows of the list go into the layout; the floor inserts as many items into the bare control.
void BenchAddPlugin(CDialog& dialog, const CPluginInventory& inventory, const CPluginListView& plugins) {
    constexpr int kAdded = 1000;
    CLayoutTreeView layout(dialog, inventory, plugins);
    layout.OnInitDialog();
    plugins.Plugins().Send(LB_SELITEMRANGEEX, 0, kAdded - 1);
    const CTreeCtrlEx& tree = layout.Layout().Tree();
    const auto result = Compare(
        kRuns,
        [&] {
            layout.Layout().Clear();
            layout.OnAddPlugin();
        },
        [&] {
            const CRedrawLock noRedraw(tree);
            tree.Delete(TVI_ROOT);
            for (int row = 0; row < kAdded; ++row)
                tree.Insert(nullptr, TVI_LAST, plugins.Plugins().RowText(row), 8, 8, row);
        });
    PrintRow("add plug-in", kAdded, result);
    layout.OnDestroy();
}

/// Ten plug-ins all over the list stay selected; the floor fills the same list and forgets them. The handler
/// that looks up the presets of what is selected is left out.
void BenchRefillInPlace(CPluginListView& view) {
    constexpr int kRows = 4000;
    constexpr int kSelected = 10;
    GrowVstInventory(kRows * 20 / 19 + 20);
    view.EnumeratePlugins();
    view.Refill();
    const CListBox plugins = view.Plugins();
    const int rows = plugins.Count();
    const auto result = Compare(
        kRuns,
        [&] {
            for (int i = 0; i < kSelected; ++i) plugins.Select((rows - 1) * i / (kSelected - 1));
            const auto remembered = CRememberedRows::Of(plugins);
            view.Refill();
            remembered.Restore(plugins);
        },
        [&] { view.Refill(); });
    PrintRow("refill in place", rows, result);
    std::printf("  ratio %.2f (aim 1.30)\n", result.Ratio());
}

/// Each key leaves all rows, ten of which are selected, as much as a key can have to do; the floor fills the
/// list by a view that looks for nothing.
void BenchFind(CPluginListView& view, CPluginListView& bare) {
    constexpr int kSelected = 10;
    const CListBox plugins = view.Plugins();
    const int rows = plugins.Count();
    bool other = false;
    const auto result = Compare(
        kRuns,
        [&] {
            for (int i = 0; i < kSelected; ++i) plugins.Select((rows - 1) * i / (kSelected - 1));
            other = !other;
            view.Find(other ? L"{" : L"}");
        },
        [&] { bare.Refill(); });
    PrintRow("a key in the field Find", rows, result);
    std::printf("  ratio %.2f (aim 1.30), %.1f ms (aim 50)\n", result.Ratio(), result.ours);
}

/// What a script waits for, but for the start of the program; the floor is one enumeration.
void BenchConsoleList(CPluginInventory& inventory, int size) {
    std::size_t written = 0;
    const auto result = Compare(
        kRuns,
        [&] {
            const CCmdStudio studio(L"");
            written = Utf8Of(ListText(RowsToList({}, studio.Plugins()), ListFormat::Json)).size();
        },
        [&] {
            inventory.ReadAdapterInventory();
            inventory.Enumerate(true);
        });
    PrintRow("list --format json", size, result);
    std::printf("  %zu bytes; ratio %.2f (aim 1.30)\n", written, result.Ratio());
}

}  // namespace

void BenchEnumeration() {
    const CPluginDatabase noDatabase;
    CPluginInventory inventory(kDefaultVstKey, noDatabase);
    std::vector<double> perItem;
    double lastRatio = 0;
    for (const int size : kSizes) {
        GrowStudio(size);
        const auto result = Compare(
            kRuns,
            [&] {
                inventory.ReadAdapterInventory();
                inventory.Enumerate(true);
            },
            BareEnumeration);
        PrintRow("EnumeratePlugins", size, result);
        perItem.push_back(result.ours / size);
        lastRatio = result.Ratio();
    }
    std::printf(
        "  %zu entries, %zu VST records; ratio at %d: %.2f (aim 1.50); time per plug-in, %d to %d: %.2f (aim "
        "1.20)\n",
        inventory.Entries().size(), inventory.Vst().Records().size(), kSizes.back(), lastRatio, kSizes.back(),
        kSizes.front(), perItem.back() / perItem.front());
    BenchConsoleList(inventory, kSizes.back());
}

void BenchPanes() {
    constexpr int kRows = 2000;
    GrowVstInventory(kRows * 20 / 19 + 20);
    const CPluginDatabase noDatabase;
    CPluginInventory inventory(kDefaultVstKey, noDatabase);
    const CExclusionList exclusions;
    const Visibility visibility;
    const VstToolPaths tools;
    CDialog dialog(IDD_PLUGIN_MANAGER);
    CPluginListView view(dialog, inventory, exclusions, visibility, tools);
    if (!dialog.CreateModeless(nullptr)) return;
    view.OnInitDialog();
    view.EnumeratePlugins();
    const auto categories = dialog.Control<CListBox>(IDC_CATEGORIES);
    categories.SetCurrentRow(1);
    view.Refill();
    std::vector<std::wstring> names;
    for (const auto& [clsid, record] : inventory.Vst().Records()) {
        if (clsid != record.md5Clsid) names.push_back(record.name);
    }
    const int rows = view.Plugins().Count();
    const auto result = Compare(
        kRuns, [&] { view.Refill(); }, [&] { FillBare(view.Plugins(), names); });
    PrintRow("category switch", rows, result);
    std::printf("  ratio %.2f (aim 1.30)\n", result.Ratio());
    view.Refill();  // the floor's rows carry no plug-ins
    BenchAddPlugin(dialog, inventory, view);
    BenchRefillInPlace(view);
    CPluginListView bare(dialog, inventory, exclusions, visibility, tools);
    BenchFind(view, bare);
    view.OnDestroy();
}
