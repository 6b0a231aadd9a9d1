#include <windows.h>

#include <objbase.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <msxml2.h>
#include <string>
#include <wrl/client.h>

#include "Benches.h"
#include "ClsidText.h"
#include "Dialog.h"
#include "DomDocument.h"
#include "LayoutDrag.h"
#include "LayoutFolder.h"
#include "LayoutHistory.h"
#include "Measure.h"
#include "XmlTreeCtrl.h"
#include "resource.h"

using Microsoft::WRL::ComPtr;

namespace {

constexpr int kRuns = 7;
constexpr std::array kSizes = {100, 1000, 3000, 10000};
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

/// Each element's name, and its attributes' names and values.
void BareNodes(IXMLDOMNode& node) {
    BSTR text = nullptr;
    node.get_nodeName(&text);
    ::SysFreeString(text);
    ComPtr<IXMLDOMNamedNodeMap> attributes;
    node.get_attributes(&attributes);
    ComPtr<IXMLDOMNode> attribute;
    while (attributes && attributes->nextNode(&attribute) == S_OK && attribute) {
        attribute->get_nodeName(&text);
        ::SysFreeString(text);
        VARIANT value;
        ::VariantInit(&value);
        attribute->get_nodeValue(&value);
        ::VariantClear(&value);
    }
    ComPtr<IXMLDOMNode> child;
    node.get_firstChild(&child);
    while (child) {
        BareNodes(*child.Get());
        ComPtr<IXMLDOMNode> next;
        child->get_nextSibling(&next);
        child = next;
    }
}

/// By way of the memory, since the parser takes much longer to open a file by itself.
ComPtr<IXMLDOMElement> BareRead(const std::wstring& path) {
    const HANDLE file =
        ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    std::string bytes(::GetFileSize(file, nullptr), '\0');
    DWORD read = 0;
    ::ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
    ::CloseHandle(file);
    const auto document = NewDomDocument();
    ParseBytes(*document.Get(), bytes);
    ComPtr<IXMLDOMElement> root;
    document->get_documentElement(&root);
    return root;
}

/// The floor of a load: the parser reads the file and is asked for all of it, and as many items go into the
/// tree.
void BareLoad(const CTreeView& tree, const std::wstring& path, const Shape& shape, int size) {
    BareNodes(*BareRead(path).Get());
    BareFill(tree, shape, size);
}

void BareSet(IXMLDOMElement& element, const wchar_t* name, const std::wstring& value) {
    element.setAttribute(Bstr(name).text, Bstr(value).Argument());
}

/// The floor of a save: the same document, built and safely written.
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
    // Beside the old file, and moved when it is on the disk.
    const std::wstring beside = path + L".bare";
    document->save(Bstr(beside).Argument());
    const HANDLE file = ::CreateFileW(beside.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ::FlushFileBuffers(file);
    ::CloseHandle(file);
    ::MoveFileExW(beside.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

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
void BenchEdits(CTreeCtrlWrapper& layout, int size) {
    CTreeCtrlEx& tree = layout.Tree();
    const CRedrawLock noRedraw{CWindow(tree.Handle())};
    const CBareTree bare(tree);
    BareFill(bare, kFlat, size);
    const auto fill = [&](int count) {
        layout.Clear();
        for (int number = 0; number < count; ++number) {
            layout.Append(nullptr, PluginNamed(NameOf(number * 7919 % count)));
        }
    };
    fill(size);
    PrintRow("sort, in order already", size,
             Compare(
                 kRuns, [&] { layout.Sort(nullptr); },
                 [&] { bare.Send(TVM_SORTCHILDREN, FALSE, reinterpret_cast<LPARAM>(TVI_ROOT)); }));
    const auto fillAndSelect = [&] {
        fill(size);
        HTREEITEM item = tree.Root();
        for (int number = 0; item; ++number, item = tree.NextSibling(item))
            tree.SetSelected(item, number % 2 == 0);
        tree.MoveCaret(tree.Root());
    };
    PrintRow("fill, select, delete half", size,
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
void BenchHistory(CTreeCtrlWrapper& layout, const Shape& shape, int size) {
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

/// Half of the items go to the top, one by one; the floor deletes and inserts as many, and asks the control
/// about each what has to be known of it.
void BenchDrag(CDialog& dialog, CTreeCtrlWrapper& layout, int size) {
    const CTreeCtrlEx& tree = layout.Tree();
    CLayoutDrag drag(dialog, layout);
    Fill(layout, kFlat, size);
    const auto selectHalf = [&] {
        int number = 0;
        for (HTREEITEM item = tree.Root(); item; item = tree.NextSibling(item))
            tree.SetSelected(item, number++ % 2 == 1);
        tree.ScrollToTop(tree.Root());
    };
    Row(
        {.name = "drag", .size = size / 2, .runs = 3, .before = selectHalf},
        [&] {
            drag.Begin(tree.SelectedItems().front(), {20, 2});
            POINT top{20, 2};
            ::MapWindowPoints(tree.Handle(), dialog.Handle(), &top, 1);
            drag.OnMouseMove(top);
            drag.Drop();
        },
        [&] {
            const CRedrawLock noRedraw(tree);
            for (int number = 0; number < size / 2; ++number) {
                const HTREEITEM item = tree.Root();
                tree.Insert(nullptr, TVI_LAST, tree.ItemText(item), 5, 5, tree.Data(item));
                tree.Delete(item);
            }
        });
    layout.Clear();
}

/// Layouts of ten items each, of which the name alone is wanted; the floor has the parser read each file.
void BenchFolder(CTreeCtrlWrapper& layout, const std::filesystem::path& folder) {
    constexpr int kItems = 10;
    const LayoutPlugins plugins{[](const Guid&) { return nullptr; }, [](LayoutItem&) {}};
    Fill(layout, kFlat, kItems);
    int made = 0;
    for (const int size : {63, 125, 250, 500}) {
        for (; made < size; ++made) {
            CXMLTreeCtrl document(layout, plugins);
            document.SetLayoutName(NameOf(made));
            document.Save(folder / (std::to_wstring(made) + L".pgl"));
        }
        Row(
            {.name = "folder of layouts", .size = size}, [&] { ScanLayoutFolder(folder); },
            [&] {
                WIN32_FIND_DATAW found{};
                const HANDLE find = ::FindFirstFileW((folder / L"*.pgl").c_str(), &found);
                do {
                    BareRead(folder / found.cFileName);
                } while (::FindNextFileW(find, &found));
                ::FindClose(find);
            });
    }
}

void BenchFiles(CTreeCtrlWrapper& layout, const Shape& shape, const std::wstring& path) {
    const LayoutPlugins plugins{[](const Guid&) { return nullptr; }, [](LayoutItem&) {}};
    const CTreeCtrlEx& tree = layout.Tree();
    for (const int size : kSizes) {
        Fill(layout, shape, size);
        const auto save = [&](bool asCopy) {
            CXMLTreeCtrl document(layout, plugins);
            document.SetLayoutName(L"Bench");
            if (asCopy) document.NoteUnsavedFile(path);
            if (!document.Save(path)) std::puts("the layout could not be saved");
        };
        const auto bareSave = [&] { BareSave(path, shape, size); };
        Row(
            {.name = shape.name + " save", .size = size}, [&] { save(false); }, bareSave);
        Row(
            {.name = shape.name + " autosave", .size = size}, [&] { save(true); }, bareSave);
        Row(
            {.name = shape.name + " load", .size = size},
            [&] {
                CXMLTreeCtrl document(layout, plugins);
                if (!document.Load(path, false)) std::puts("the layout could not be loaded");
            },
            [&] { BareLoad(tree, path, shape, size); });
    }
}

}  // namespace

void BenchLayouts() {
    CDialog dialog(IDD_PLUGIN_MANAGER);
    if (!dialog.CreateModeless(nullptr)) return;
    CTreeCtrlEx tree;
    tree.Attach(dialog.Item(IDC_LAYOUT_TREE).Handle(), {});
    CTreeCtrlWrapper layout(tree);
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / L"Layout bench";
    std::filesystem::create_directories(folder);
    BenchFiles(layout, kFolders, folder / L"bench.pgl");
    BenchFiles(layout, kFlat, folder / L"bench.pgl");
    BenchFolder(layout, folder);
    std::filesystem::remove_all(folder);
    for (const int size : kSizes) {
        BenchEdits(layout, size);
        BenchHistory(layout, kFolders, size);
        BenchHistory(layout, kFlat, size);
    }
    for (const int size : {250, 500, 1000, 2000}) BenchDrag(dialog, layout, size);
}
