// A hundred rounds of everything: what the process holds must be the same afterwards.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>

#include "Backups.h"
#include "Bare.h"
#include "BareLayout.h"
#include "Benches.h"
#include "FileStream.h"
#include "Holdings.h"
#include "LayoutFolder.h"
#include "MainWindow.h"
#include "Measure.h"
#include "PresetTransfer.h"
#include "PresetWriter.h"
#include "Studio.h"

namespace {

namespace fs = std::filesystem;

constexpr int kRounds = 100;
constexpr int kWarmUp = 5;
constexpr int kCategoriesShown = 9;
constexpr int kSome = 5;

/// The commands of the window.
class CRounds {
  public:
    explicit CRounds(const fs::path& folder)
        : m_folder(folder), m_layout(folder / L"rounds.pgl"), m_window(folder) {
        BareSave(m_layout.wstring(), kElements);
        m_window.Choose(1);
    }

    void SwitchCategories() {
        for (int row = kCategoriesShown - 1; row > 0; --row) m_window.Choose(row);
    }
    void SwitchVisibility() {
        m_window.Press(IDC_SHOW_EXCLUDED);
        m_window.Press(IDC_SHOW_ENABLED);
    }
    void Select() {
        m_window.SelectFirst(1);
        m_window.SelectFirst(m_window.Plugins().Count());
    }
    void Find() {
        m_window.List().Find(L"bench 1");
        m_window.List().Find(L"");
    }
    void ExcludeAndEnable() {
        m_window.SelectFirst(kSome);
        m_window.Press(IDC_EXCLUDE);
        m_window.Press(IDC_SHOW_EXCLUDED);
        m_window.SelectFirst(kSome);
        m_window.Press(IDC_EXCLUDE);
        m_window.Press(IDC_SHOW_ENABLED);
    }
    void LoadLayout() { m_window.View<CLayoutFilesView>().Open(m_layout); }
    void LoadBare() { BareNodes(*BareRead(m_layout.wstring()).Get()); }
    void SaveLayout() {
        const LayoutPlugins plugins{[](const Guid&) { return nullptr; }, [](LayoutItem&) {}};
        CXMLTreeCtrl document(m_window.Layout(), plugins);
        document.SetLayoutName(L"Bench");
        document.Save(m_folder / L"saved.pgl");
    }
    void SaveBare() { BareSave(m_folder / L"saved.pgl", kElements); }
    void Edit() {
        m_window.SelectFirst(2 * kSome);
        m_window.Press(IDC_ADD_PLUGIN);
        m_window.Press(IDC_SORT_ALL);
        m_window.DragToTop();
        m_window.Press(ID_UNDO);
        m_window.Press(ID_REDO);
        m_window.Press(IDC_ADD_SEPARATOR);
        m_window.Press(IDC_MOVE_UP);
        m_window.Press(IDC_REMOVE);
        m_window.Layout().Clear();
        m_window.View<CLayoutTreeView>().ForgetSteps();
    }
    void MovePresets() {
        const CPresetListMgr store("{BAC00001-0000-0000-0000-000000000000}"_guid,
                                   RowOf(Category::VstEffects).guid, L"Bench");
        const std::wstring file = m_folder / L"rounds.spp";
        {
            CPresetWriter writer(store);
            const std::vector<std::byte> data(64, std::byte{'p'});
            for (int i = 0; i < kSome; ++i) {
                const std::wstring name = L"Preset " + std::to_wstring(i);
                writer.StoreImportedPreset({.type = kPresetInRegistry, .name = name, .data = data});
            }
        }
        {
            auto sink = CFileSink::Create(file);
            ExportPresets(*sink, store, nullptr);
        }
        auto source = CFileSource::Open(file);
        ImportPresets(*source, store, nullptr);
        if (store.CountPresets() != kSome) std::puts("the presets did not come back");
        store.DeleteAllPresets();
    }
    void ScanFolder() { ScanLayoutFolder(m_folder); }
    void ScanBare() {
        for (const auto& entry : fs::directory_iterator(m_folder)) {
            if (entry.path().extension() == L".pgl") BareRead(entry.path().wstring());
        }
    }
    void BackUp() {
        CBackups((m_folder / L"Own backups").wstring(), L"1")
            .Make({.kind = BackupKind::Layouts, .name = L"Bench", .keys = {}, .files = {m_layout.wstring()}})
            .Discard();
    }
    void NoteBare() {
        BareSave(m_folder / L"note.xml",
                 {{L"Backup",
                   {{L"Format", L"1"},
                    {L"Kind", L"layouts"},
                    {L"Step", L"Bench"},
                    {L"Time", L"2000-01-01 00:00:00"},
                    {L"Version", L"1"}}},
                  {L"File", {{L"Path", m_layout.wstring()}, {L"Copy", L"1 rounds.pgl"}}}});
    }
    void Enumerate() {
        m_window.List().EnumeratePlugins();
        m_window.List().Refill();
    }
    void EnumerateBare() { BareEnumeration(); }
    void Rest() {}

  private:
    const std::vector<BareElement> kElements = BareLayout(Shape::Folders, 2 * kItemsInFolder);
    const fs::path m_folder;
    const fs::path m_layout;
    CMainWindow m_window;
};

using Round = void (CRounds::*)();
struct RoundRow {
    const char* name;
    Round ours;
    Round floor = &CRounds::Rest;  // what the system keeps when it is asked the same
};
constexpr RoundRow kRoundRows[] = {
    {"all categories", &CRounds::SwitchCategories},
    {"excluded and enabled shown", &CRounds::SwitchVisibility},
    {"selecting", &CRounds::Select},
    {"finding", &CRounds::Find},
    {"excluding and enabling", &CRounds::ExcludeAndEnable},
    {"loading a layout", &CRounds::LoadLayout, &CRounds::LoadBare},
    {"saving a layout", &CRounds::SaveLayout, &CRounds::SaveBare},
    {"editing a layout", &CRounds::Edit},
    {"moving presets", &CRounds::MovePresets},
    {"looking for layouts", &CRounds::ScanFolder, &CRounds::ScanBare},
    {"a backup", &CRounds::BackUp, &CRounds::NoteBare},
    {"finding all plug-ins", &CRounds::Enumerate, &CRounds::EnumerateBare},
};

/// What a hundred rounds leave behind.
Holdings LeftBy(Round round, CRounds& rounds) {
    for (int i = 0; i < kWarmUp; ++i) (rounds.*round)();
    const Holdings before = Holdings::Now();
    for (int i = 0; i < kRounds; ++i) (rounds.*round)();
    return Holdings::Now() - before;
}

}  // namespace

void BenchRounds() {
    GrowStudio(500);
    const fs::path folder = fs::temp_directory_path() / L"Rounds bench";
    fs::create_directories(folder);
    {
        CRounds rounds(folder);
        double mostKilobytes = 0;
        int objects = 0;
        for (const RoundRow& row : kRoundRows) {
            const Holdings floor = LeftBy(row.floor, rounds);
            const Holdings ours = LeftBy(row.ours, rounds);
            const Holdings own = ours - floor;
            std::printf("  %s: %.1f kB, of which the system's %.1f; handles %d, %d; GDI %d; user %d\n",
                        row.name, ours.heapKilobytes, floor.heapKilobytes, ours.handles, floor.handles,
                        ours.gdiObjects, ours.userObjects);
            mostKilobytes = std::max(mostKilobytes, own.heapKilobytes);
            for (const int more : {own.handles, own.gdiObjects, own.userObjects})
                objects += std::max(0, more);
        }
        Figure("kB more than the bare calls leave, at most, after 100 rounds of a command", mostKilobytes, 1);
        Figure("handles, GDI and user objects more, after 100 rounds of each command", objects, 0);
    }
    fs::remove_all(folder);
}
