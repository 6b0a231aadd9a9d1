#include <windows.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <string>
#include <utility>

#include "BareLayout.h"
#include "Benches.h"
#include "Dialog.h"
#include "LayoutDrag.h"
#include "LayoutFolder.h"
#include "LayoutHistory.h"
#include "Measure.h"
#include "XmlTreeCtrl.h"
#include "resource.h"

namespace {

namespace fs = std::filesystem;

constexpr std::array kSizes = {100, 1000, 3000, 10000};

LayoutItem RecordOf(Shape shape, int number, int size) {
    const BenchItem kind = KindOf(shape, number);
    if (kind == BenchItem::Separator) return NewSeparator();
    if (kind == BenchItem::Folder) return NewFolder(NameOf(shape, number, size));
    LayoutItem plugin = NewPlugin();
    plugin.name = plugin.originalName = NameOf(shape, number, size);
    plugin.clsid = {static_cast<std::uint32_t>(number), 1, 2, {3}};
    return plugin;
}

/// A layout in a dialog that is not shown, and beside it a bare tree.
class CLayoutBench {
  public:
    explicit CLayoutBench(fs::path folder) : m_folder(std::move(folder)) {
        m_dialog.CreateModeless(nullptr);
        m_tree.Attach(m_dialog.Item(IDC_LAYOUT_TREE).Handle(), {});
        m_bare.emplace(m_tree);
    }

    void Files(Shape shape, const std::string& name, int size);
    void History(Shape shape, const std::string& name, int size);
    void Sort(int size);
    void Halves(int size);
    void Folder();

  private:
    void Fill(Shape shape, int size) {
        m_layout.Clear();
        const CRedrawLock noRedraw(m_tree);
        InsertAll(shape, size, [&](HTREEITEM parent, int number) {
            return m_layout.Prepend(parent, RecordOf(shape, number, size));
        });
    }
    void Save(const fs::path& path, bool asCopy) {
        CXMLTreeCtrl document(m_layout, kPlugins);
        document.SetLayoutName(L"Bench");
        if (asCopy) document.NoteUnsavedFile(path.wstring());
        if (!document.Save(path.wstring())) std::puts("the layout could not be saved");
    }

    const LayoutPlugins kPlugins{[](const Guid&) { return nullptr; }, [](LayoutItem&) {}};
    const fs::path m_folder;
    CDialog m_dialog{IDD_PLUGIN_MANAGER};
    CTreeCtrlEx m_tree;
    CTreeCtrlWrapper m_layout{m_tree};
    std::optional<CBareTree> m_bare;
};

void CLayoutBench::Files(Shape shape, const std::string& name, int size) {
    const fs::path path = m_folder / L"bench.pgl";
    const std::vector<BareElement> elements = BareLayout(shape, size);
    const auto bareSave = [&] { BareSave(path.wstring(), elements); };
    Fill(shape, size);
    Row(
        name + " autosave", size, [&] { Save(path, true); }, bareSave);
    Row(
        name + " save", size, [&] { Save(path, false); }, bareSave);
    Row(
        name + " load", size,
        [&] {
            CXMLTreeCtrl document(m_layout, kPlugins);
            if (!document.Load(path.wstring(), false)) std::puts("the layout could not be loaded");
        },
        [&] {
            BareNodes(*BareRead(path.wstring()).Get());
            m_bare->Fill(shape, size);
        });
}

/// A step is undone, and made again.
void CLayoutBench::History(Shape shape, const std::string& name, int size) {
    Fill(shape, size);
    CLayoutHistory history(m_layout);
    {
        const CLayoutHistory::CStep step(history, IDS_STEP_SORT_ALL);
        m_layout.Sort(nullptr);
    }
    Row(
        name + " undo, or redo", size,
        [&] {
            if (!history.Undo()) history.Redo();
        },
        [&] { m_bare->Fill(shape, size); });
}

void CLayoutBench::Sort(int size) {
    const CRedrawLock noRedraw(m_tree);
    Row(
        "sort", size, [&] { m_layout.Sort(nullptr); },
        [&] { m_bare->Send(TVM_SORTCHILDREN, FALSE, reinterpret_cast<LPARAM>(TVI_ROOT)); },
        [&] {
            Fill(Shape::Mixed, size);
            m_bare->Fill(Shape::Mixed, size);
        });
}

/// Every second item is deleted, or dragged to the top.
void CLayoutBench::Halves(int size) {
    std::vector<HTREEITEM> half;
    const auto selectHalf = [&] {
        Fill(Shape::Flat, size);
        int number = 0;
        for (HTREEITEM item = m_tree.Root(); item; item = m_tree.NextSibling(item))
            m_tree.SetSelected(item, number++ % 2 == 1);
        m_tree.MoveCaret(m_tree.Root());
        m_tree.ScrollToTop(m_tree.Root());
        m_bare->Fill(Shape::Flat, size);
        half = m_bare->EverySecond();
    };
    Row(
        "delete half", size, [&] { m_layout.DeleteSelection(); },
        [&] {
            const CRedrawLock noRedraw(*m_bare);
            for (const HTREEITEM item : half) m_bare->Delete(item);
        },
        selectHalf);
    Row(
        "drag half", size,
        [&] {
            CLayoutDrag drag(m_dialog, m_layout);
            drag.Begin(m_tree.SelectedItems().front(), {20, 2});
            POINT top{20, 2};
            ::MapWindowPoints(m_tree.Handle(), m_dialog.Handle(), &top, 1);
            drag.OnMouseMove(top);
            drag.Drop();
        },
        [&] {
            const CRedrawLock noRedraw(*m_bare);
            HTREEITEM last = TVI_FIRST;
            for (const HTREEITEM item : half) {
                last = m_bare->Insert(nullptr, last, m_bare->ItemText(item), 5, 5, m_bare->Data(item));
                m_bare->Delete(item);
            }
        },
        selectHalf);
}

/// Layouts of ten items each, of which the name alone is wanted.
void CLayoutBench::Folder() {
    Fill(Shape::Flat, 10);
    int made = 0;
    for (const int size : {63, 125, 250, 500}) {
        for (; made < size; ++made) Save(m_folder / (std::to_wstring(made) + L".pgl"), false);
        Row(
            "folder of layouts", size, [&] { ScanLayoutFolder(m_folder); },
            [&] {
                WIN32_FIND_DATAW found{};
                const HANDLE find = ::FindFirstFileW((m_folder / L"*.pgl").c_str(), &found);
                do {
                    BareRead(m_folder / found.cFileName);
                } while (::FindNextFileW(find, &found));
                ::FindClose(find);
            });
    }
}

}  // namespace

void BenchLayouts() {
    const fs::path folder = fs::temp_directory_path() / L"Layout bench";
    fs::create_directories(folder);
    {
        CLayoutBench bench(folder);
        for (const int size : kSizes) {
            for (const auto& [shape, name] :
                 {std::pair(Shape::Folders, "layout"), {Shape::Flat, "flat layout"}}) {
                bench.Files(shape, name, size);
                bench.History(shape, name, size);
            }
            bench.Sort(size);
        }
        fs::remove(folder / L"bench.pgl");
        bench.Folder();
        for (const int size : {500, 1000, 2000, 4000}) bench.Halves(size);
    }
    fs::remove_all(folder);
}
