#include <windows.h>

#include <objbase.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <msxml2.h>
#include <string>
#include <wrl/client.h>

#include "Benches.h"
#include "ClsidText.h"
#include "Dialog.h"
#include "LayoutHistory.h"
#include "Measure.h"
#include "XmlTreeCtrl.h"
#include "resource.h"

using Microsoft::WRL::ComPtr;

namespace {

constexpr int kRuns = 7;
constexpr std::array kSizes = {100, 1000, 10000};
constexpr int kItemsInFolder = 20;
constexpr int kSeparatorEvery = 7;

constexpr CLSID kParser = {0x88D96A05, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}};

struct Bstr {
    explicit Bstr(const std::wstring& value) : text(::SysAllocString(value.c_str())) {}
    ~Bstr() { ::SysFreeString(text); }
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    VARIANT Argument() const {
        VARIANT argument;
        ::VariantInit(&argument);
        argument.vt = VT_BSTR;
        argument.bstrVal = text;
        return argument;
    }
    BSTR text;
};

/// A folder of twenty items after the other, among them separators; or the same items without any folder.
struct Shape {
    std::string name;
    bool flat;
    bool IsFolder(int number) const { return !flat && number % kItemsInFolder == 0; }
};
const Shape kFolders = {"layout", false};
const Shape kFlat = {"flat layout", true};

bool IsSeparator(int number) { return number % kSeparatorEvery == 3; }
std::wstring NameOf(int number) { return L"Bench item " + std::to_wstring(number); }
Guid IdOf(int number) { return {static_cast<std::uint32_t>(number), 1, 2, {3}}; }

void Fill(CTreeCtrlWrapper& layout, const Shape& shape, int size) {
    layout.Clear();
    const CRedrawLock noRedraw{CWindow(layout.Tree().Handle())};
    HTREEITEM folder = nullptr;
    for (int number = 0; number < size; ++number) {
        if (shape.IsFolder(number)) {
            folder = layout.Append(nullptr, NewFolder(NameOf(number)));
        } else if (IsSeparator(number)) {
            layout.Append(folder, NewSeparator());
        } else {
            LayoutItem plugin = NewPlugin();
            plugin.name = plugin.originalName = NameOf(number);
            plugin.clsid = IdOf(number);
            layout.Append(folder, plugin);
        }
    }
}

ComPtr<IXMLDOMDocument> BareDocument() {
    ComPtr<IXMLDOMDocument> document;
    ::CoCreateInstance(kParser, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument,
                       reinterpret_cast<void**>(document.GetAddressOf()));
    document->put_async(VARIANT_FALSE);
    return document;
}

/// Clears the tree and puts as many items into it.
void BareFill(const CTreeView& tree, const Shape& shape, int size) {
    const CRedrawLock noRedraw(tree);
    tree.Delete(TVI_ROOT);
    HTREEITEM folder = nullptr;
    for (int number = 0; number < size; ++number) {
        const bool isFolder = shape.IsFolder(number);
        const std::wstring name = IsSeparator(number) ? kSeparatorText : NameOf(number);
        const HTREEITEM place = shape.flat ? TVI_FIRST : TVI_LAST;
        const HTREEITEM item = tree.Insert(isFolder ? nullptr : folder, place, name, 5, 5, number);
        if (isFolder) folder = item;
    }
}

/// The floor of a load: the parser reads the file, and as many items go into the tree.
void BareLoad(const CTreeView& tree, const std::wstring& path, const Shape& shape, int size) {
    VARIANT_BOOL loaded = VARIANT_FALSE;
    BareDocument()->load(Bstr(path).Argument(), &loaded);
    BareFill(tree, shape, size);
}

void BareSet(IXMLDOMElement& element, const wchar_t* name, const std::wstring& value) {
    element.setAttribute(Bstr(name).text, Bstr(value).Argument());
}

/// The floor of a save: the same document, built and written.
void BareSave(const std::wstring& path, const Shape& shape, int size) {
    const ComPtr<IXMLDOMDocument> document = BareDocument();
    VARIANT_BOOL loaded = VARIANT_FALSE;
    document->loadXML(Bstr(L"<?xml version=\"1.0\" encoding=\"UTF-8\"?><PluginMenuLayout/>").text, &loaded);
    ComPtr<IXMLDOMElement> root;
    document->get_documentElement(&root);
    BareSet(*root.Get(), L"DocSchema", L"1");
    BareSet(*root.Get(), L"Name", L"Bench");
    ComPtr<IXMLDOMElement> folder;
    for (int number = 0; number < size; ++number) {
        const bool isFolder = shape.IsFolder(number);
        const wchar_t* tag = isFolder ? L"Folder" : IsSeparator(number) ? L"Separator" : L"Plugin";
        ComPtr<IXMLDOMElement> element;
        document->createElement(Bstr(tag).text, &element);
        (isFolder || !folder ? root : folder)->appendChild(element.Get(), nullptr);
        if (isFolder) {
            BareSet(*element.Get(), L"Name", NameOf(number));
            folder = element;
        } else if (!IsSeparator(number)) {
            BareSet(*element.Get(), L"CLSID", ClsidText(IdOf(number)));
            BareSet(*element.Get(), L"Category", L"0");
            BareSet(*element.Get(), L"Name", NameOf(number));
            BareSet(*element.Get(), L"OriginalName", NameOf(number));
        }
    }
    document->save(Bstr(path).Argument());
}

constexpr int kSorted = 10000;
constexpr int kDeleted = 5000;

LayoutItem PluginNamed(const std::wstring& name) {
    LayoutItem plugin = NewPlugin();
    plugin.name = name;
    return plugin;
}

/// A control of its own beside the layout's, without the program's extensions.
class CBareTree : public CTreeView {
  public:
    explicit CBareTree(const CTreeView& other)
        : CTreeView(::CreateWindowExW(0, WC_TREEVIEWW, L"", WS_CHILD, 0, 0, 300, 300,
                                      ::GetParent(other.Handle()), nullptr, ::GetModuleHandleW(nullptr),
                                      nullptr)) {}
    ~CBareTree() { ::DestroyWindow(m_hwnd); }
    CBareTree(const CBareTree&) = delete;
    CBareTree& operator=(const CBareTree&) = delete;
};

/// Each edit beside the bare messages to the control that do the same.
void BenchEdits(CTreeCtrlWrapper& layout) {
    CTreeCtrlEx& tree = layout.Tree();
    const CRedrawLock noRedraw{CWindow(tree.Handle())};
    const CBareTree bare(tree);
    BareFill(bare, kFlat, kSorted);
    const auto fill = [&](int count) {
        layout.Clear();
        for (int number = 0; number < count; ++number) {
            layout.Append(nullptr, PluginNamed(NameOf(number * 7919 % count)));
        }
    };
    fill(kSorted);
    PrintRow("sort, in order already", kSorted,
             Compare(
                 kRuns, [&] { layout.Sort(nullptr); },
                 [&] { bare.Send(TVM_SORTCHILDREN, FALSE, reinterpret_cast<LPARAM>(TVI_ROOT)); }));
    const auto fillAndSelect = [&] {
        fill(2 * kDeleted);
        HTREEITEM item = tree.Root();
        for (int number = 0; item; ++number, item = tree.NextSibling(item))
            tree.SetSelected(item, number % 2 == 0);
        tree.MoveCaret(tree.Root());
    };
    PrintRow("fill, select, delete half", 2 * kDeleted,
             Compare(
                 3,
                 [&] {
                     fillAndSelect();
                     layout.DeleteSelection();
                 },
                 [&] {
                     fillAndSelect();
                     for (const HTREEITEM item : tree.SelectedItems()) tree.Delete(item);
                 }));
}

/// Undoing a step and doing it again, beside filling another tree barely.
void BenchHistory(CTreeCtrlWrapper& layout, const Shape& shape) {
    const int size = kSizes.back();
    const CBareTree bare(layout.Tree());
    Fill(layout, shape, size);
    CLayoutHistory history(layout);
    {
        const CLayoutHistory::CStep step(history, IDS_STEP_SORT_ALL);
        layout.Sort(nullptr);
    }
    const auto travel = [&] {
        if (!history.Undo()) history.Redo();
    };
    PrintRow(shape.name + " undo, or redo", size,
             Compare(kRuns, travel, [&] { BareFill(bare, shape, size); }));
}

/// How a time grows with the number of items: 1 is in proportion, 2 with its square.
void PrintGrowth(const std::string& what, const Comparison& small, const Comparison& large, double times) {
    std::printf("  growth of %s: exponent %.2f, floor %.2f\n", what.c_str(),
                std::log(large.ours / small.ours) / std::log(times),
                std::log(large.floor / small.floor) / std::log(times));
}

void BenchFiles(CTreeCtrlWrapper& layout, const Shape& shape, const std::wstring& path) {
    const LayoutPlugins plugins{[](const Guid&) { return nullptr; }, [](LayoutItem&) {}};
    const CTreeCtrlEx& tree = layout.Tree();
    Comparison savedBefore;
    Comparison loadedBefore;
    for (const int size : kSizes) {
        Fill(layout, shape, size);
        const auto save = [&] {
            CXMLTreeCtrl document(layout, plugins);
            document.SetLayoutName(L"Bench");
            if (!document.Save(path)) std::puts("the layout could not be saved");
        };
        const auto saved = Compare(kRuns, save, [&] { BareSave(path, shape, size); });
        PrintRow(shape.name + " save", size, saved);
        if (size == kSizes.back()) {
            const auto autosaved = Compare(
                kRuns,
                [&] {
                    CXMLTreeCtrl document(layout, plugins);
                    document.SetLayoutName(L"Bench");
                    document.NoteUnsavedFile(path);
                    if (!document.Save(path)) std::puts("the copy could not be written");
                },
                [&] { BareSave(path, shape, size); });
            PrintRow(shape.name + " autosave (aim 100 ms)", size, autosaved);
        }
        const auto loaded = Compare(
            kRuns,
            [&] {
                CXMLTreeCtrl document(layout, plugins);
                if (!document.Load(path, false)) std::puts("the layout could not be loaded");
            },
            [&] { BareLoad(tree, path, shape, size); });
        PrintRow(shape.name + " load", size, loaded);
        if (size == kSizes.back()) {
            std::printf("  ratios at %d: save %.2f, load %.2f (aim 1.50)\n", size, saved.Ratio(),
                        loaded.Ratio());
            constexpr double kTimes = static_cast<double>(kSizes.back()) / kSizes[kSizes.size() - 2];
            PrintGrowth("save", savedBefore, saved, kTimes);
            PrintGrowth("load", loadedBefore, loaded, kTimes);
        }
        savedBefore = saved;
        loadedBefore = loaded;
    }
}

}  // namespace

void BenchLayouts() {
    CDialog dialog(IDD_PLUGIN_MANAGER);
    if (!dialog.CreateModeless(nullptr)) return;
    CTreeCtrlEx tree;
    tree.Attach(dialog.Item(IDC_LAYOUT_TREE).Handle(), {});
    CTreeCtrlWrapper layout(tree);
    const std::wstring path = (std::filesystem::temp_directory_path() / L"bench.pgl").wstring();
    BenchFiles(layout, kFolders, path);
    BenchFiles(layout, kFlat, path);
    ::DeleteFileW(path.c_str());
    BenchEdits(layout);
    BenchHistory(layout, kFolders);
    BenchHistory(layout, kFlat);
}
