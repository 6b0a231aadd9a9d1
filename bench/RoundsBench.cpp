// A hundred rounds of everything: what the process holds must be the same afterwards.
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "Backups.h"
#include "BareEnumeration.h"
#include "Benches.h"
#include "DomDocument.h"
#include "FileStream.h"
#include "Holdings.h"
#include "LayoutFolder.h"
#include "MainWindow.h"
#include "Measure.h"
#include "PresetTransfer.h"
#include "PresetWriter.h"
#include "Studio.h"
#include "Variant.h"

namespace {

using Microsoft::WRL::ComPtr;
namespace fs = std::filesystem;

constexpr int kRounds = 100;
constexpr int kWarmUp = 5;
constexpr int kCategoriesShown = 9;
constexpr Guid kRoundPlugin = "{BAC00001-0000-0000-0000-000000000000}"_guid;

class CRounds {
  public:
    explicit CRounds(const fs::path& folder) : m_folder(folder), m_window(folder) {
        std::ofstream(m_layout, std::ios::binary) << kLayout;
        m_window.Choose(1);
        m_backups.emplace((folder / L"Own backups").wstring(), L"1");
    }

    void Enumerate() {
        m_window.List().EnumeratePlugins();
        m_window.List().Refill();
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
        constexpr int kSome = 5;
        m_window.SelectFirst(kSome);
        m_window.Press(IDC_EXCLUDE);
        m_window.Press(IDC_SHOW_EXCLUDED);
        m_window.SelectFirst(kSome);
        m_window.Press(IDC_EXCLUDE);
        m_window.Press(IDC_SHOW_ENABLED);
    }
    void LoadLayout() { m_window.View<CLayoutFilesView>().Open(m_layout); }
    void LoadBare() const {
        const auto document = NewDomDocument();
        ParseBytes(*document.Get(), kLayout);
    }
    void SaveBare() const { BuildBare(kLayoutParts); }
    void SaveBareRecord() const {
        const std::wstring path = m_layout.wstring();
        BuildBare({{L"Backup",
                    {{L"Format", L"1"},
                     {L"Kind", L"layouts"},
                     {L"Step", L"Bench"},
                     {L"Time", L"2000-01-01 00:00:00"},
                     {L"Version", L"1"}}},
                   {L"File", {{L"Path", path}, {L"Copy", L"1 rounds.pgl"}}}});
    }
    void SaveLayout() {
        const LayoutPlugins plugins{[](const Guid&) { return nullptr; }, [](LayoutItem&) {}};
        CXMLTreeCtrl document(m_window.Layout(), plugins);
        document.SetLayoutName(L"Bench");
        document.Save(m_folder / L"saved.pgl");
    }
    void Edit() {
        m_window.SelectFirst(10);
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
    void MovePresets() const {
        constexpr int kPresets = 5;
        const CPresetListMgr store(kRoundPlugin, RowOf(Category::VstEffects).guid, L"Bench");
        const std::wstring file = m_folder / L"rounds.spp";
        {
            CPresetWriter writer(store);
            const std::vector<std::byte> data(64, std::byte{'p'});
            for (int i = 0; i < kPresets; ++i) {
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
        if (store.CountPresets() != kPresets) std::puts("the presets did not come back");
        store.DeleteAllPresets();
    }
    void ScanFolderBare() const {
        for (const auto& entry : fs::directory_iterator(m_folder)) {
            if (entry.path().extension() != L".pgl") continue;
            std::ifstream file(entry.path(), std::ios::binary);
            ParseBytes(*NewDomDocument().Get(), std::string(std::istreambuf_iterator<char>(file), {}));
        }
    }
    void ScanFolder() const { ScanLayoutFolder(m_folder); }
    void BackUp() {
        const BackupStep step{
            .kind = BackupKind::Layouts, .name = L"Bench", .keys = {}, .files = {m_layout.wstring()}};
        m_backups->Make(step).Discard();
    }

  private:
    struct Part {
        std::wstring tag;
        std::vector<std::pair<std::wstring, std::wstring>> attributes;
    };
    /// A document by the calls to the parser that the program makes. Some parsers keep a part of what was
    /// written.
    static void BuildBare(const std::vector<Part>& parts) {
        const auto document = NewDomDocument();
        VARIANT_BOOL loaded = VARIANT_FALSE;
        document->loadXML(BstrOf(L"<?xml version=\"1.0\"?><root></root>").Get(), &loaded);
        ComPtr<IXMLDOMProcessingInstruction> header;
        document->createProcessingInstruction(BstrOf(L"xml").Get(),
                                              BstrOf(L"version=\"1.0\" encoding=\"UTF-8\"").Get(), &header);
        ComPtr<IXMLDOMNode> first;
        document->get_firstChild(&first);
        document->replaceChild(header.Get(), first.Get(), nullptr);
        ComPtr<IXMLDOMElement> root;
        for (const Part& part : parts) {
            ComPtr<IXMLDOMElement> element;
            document->createElement(BstrOf(part.tag).Get(), &element);
            root ? root->appendChild(element.Get(), nullptr)
                 : document->putref_documentElement(element.Get());
            if (!root) root = element;
            for (const auto& [name, value] : part.attributes)
                element->setAttribute(BstrOf(name).Get(), CVariant(value).Get());
        }
        BytesOf(*document.Get());
    }

    static constexpr wchar_t kPlugin[] = L"{BAC00000-0000-0000-0000-000000000000}";
    const std::vector<Part> kLayoutParts = {
        {L"PluginMenuLayout", {{L"DocSchema", L"1"}, {L"Name", L"Bench"}}},
        {L"Folder", {{L"Name", L"A"}}},
        {L"Plugin",
         {{L"CLSID", kPlugin},
          {L"CLSIDMD5", kPlugin},
          {L"Category", L"1"},
          {L"Name", L"P"},
          {L"OriginalName", L"P"}}},
        {L"Separator", {}},
        {L"Folder", {{L"Name", L"B"}}}};
    static constexpr char kLayout[] =
        R"(<?xml version="1.0" encoding="UTF-8"?><PluginMenuLayout DocSchema="1" Name="Bench"><Folder Name="A">)"
        R"(<Plugin CLSID="{BAC00000-0000-0000-0000-000000000000}" Category="1" Name="P" OriginalName="P"/>)"
        R"(<Separator/></Folder><Folder Name="B"/></PluginMenuLayout>)";

    const fs::path m_folder;
    const fs::path m_layout = m_folder / L"rounds.pgl";
    CMainWindow m_window;
    std::optional<CBackups> m_backups;
};

struct Round {
    const char* name;
    std::function<void(CRounds&)> work;
    std::function<void(CRounds&)> floor = nullptr;  // what the system leaves behind when it is asked the same
};
const Round kRoundsOf[] = {
    {"all categories", &CRounds::SwitchCategories},
    {"excluded and enabled shown", &CRounds::SwitchVisibility},
    {"selecting", &CRounds::Select},
    {"finding", &CRounds::Find},
    {"excluding and enabling", &CRounds::ExcludeAndEnable},
    {"loading a layout", &CRounds::LoadLayout, &CRounds::LoadBare},
    {"saving a layout", &CRounds::SaveLayout, &CRounds::SaveBare},
    {"editing a layout", &CRounds::Edit},
    {"moving presets", &CRounds::MovePresets},
    {"looking for layouts", &CRounds::ScanFolder, &CRounds::ScanFolderBare},
    {"a backup", &CRounds::BackUp, &CRounds::SaveBareRecord},
    {"finding all plug-ins", &CRounds::Enumerate, [](CRounds&) { BareEnumeration(); }},
};

/// What a hundred rounds leave behind.
Holdings LeftBy(const std::function<void(CRounds&)>& work, CRounds& rounds) {
    if (!work) return {};
    for (int i = 0; i < kWarmUp; ++i) work(rounds);
    const Holdings before = Holdings::Now();
    for (int i = 0; i < kRounds; ++i) work(rounds);
    return Holdings::Now() - before;
}

}  // namespace

void BenchRounds() {
    GrowStudio(500);
    CountCalls();
    const fs::path folder = fs::temp_directory_path() / L"Rounds bench";
    fs::create_directories(folder);
    {
        CRounds rounds(folder);
        for (const Round& round : kRoundsOf) {
            const Holdings floor = LeftBy(round.floor, rounds);
            const Holdings ours = LeftBy(round.work, rounds);
            const Holdings own = ours - floor;
            std::printf("  %s: %.1f kB, of which the system's %.1f; handles %d, %d; GDI %d; user %d\n",
                        round.name, ours.heapKilobytes, floor.heapKilobytes, ours.handles, floor.handles,
                        ours.gdiObjects, ours.userObjects);
            Figure(std::string("kB more after 100 rounds of ") + round.name, own.heapKilobytes, 1);
            Figure(std::string("handles and objects more after 100 rounds of ") + round.name,
                   own.handles + own.gdiObjects + own.userObjects, 0);
        }
    }
    fs::remove_all(folder);
}
