#include "BareLayout.h"

#include "ClsidText.h"
#include "DomDocument.h"
#include "Handles.h"
#include "LayoutItem.h"
#include "Variant.h"

using Microsoft::WRL::ComPtr;

namespace {

constexpr int kSeparatorEvery = 7;

}  // namespace

BenchItem KindOf(Shape shape, int number) {
    if (shape == Shape::Folders && number % kItemsInFolder == 0) return BenchItem::Folder;
    return shape != Shape::Mixed && number % kSeparatorEvery == 3 ? BenchItem::Separator : BenchItem::Plugin;
}

std::wstring NameOf(Shape shape, int number, int size) {
    return L"Bench item " + std::to_wstring(shape == Shape::Mixed ? number * 7919 % size : number);
}

CBareTree::CBareTree(const CTreeView& other)
    : CTreeView(::CreateWindowExW(0, WC_TREEVIEWW, L"", WS_CHILD, 0, 0, 300, 300, ::GetParent(other.Handle()),
                                  nullptr, ::GetModuleHandleW(nullptr), nullptr)) {}

void CBareTree::Fill(Shape shape, int size) const {
    const CRedrawLock noRedraw(*this);
    Delete(TVI_ROOT);
    InsertAll(shape, size, [&](HTREEITEM parent, int number) {
        return Insert(parent, TVI_FIRST, NameOf(shape, number, size), 5, 5, number);
    });
}

std::vector<HTREEITEM> CBareTree::EverySecond() const {
    std::vector<HTREEITEM> items;
    bool second = false;
    for (HTREEITEM item = Root(); item; item = NextSibling(item), second = !second) {
        if (second) items.push_back(item);
    }
    return items;
}

std::vector<BareElement> BareLayout(Shape shape, int size) {
    std::vector<BareElement> layout = {{L"PluginMenuLayout", {{L"DocSchema", L"1"}, {L"Name", L"Bench"}}}};
    for (int number = 0; number < size; ++number) {
        const std::wstring name = NameOf(shape, number, size);
        switch (KindOf(shape, number)) {
            case BenchItem::Folder:
                layout.push_back({L"Folder", {{L"Name", name}}});
                break;
            case BenchItem::Separator:
                layout.push_back({L"Separator", {}});
                break;
            case BenchItem::Plugin:
                layout.push_back({L"Plugin",
                                  {{L"CLSID", ClsidText({static_cast<std::uint32_t>(number), 1, 2, {3}})},
                                   {L"Category", L"0"},
                                   {L"Name", name},
                                   {L"OriginalName", name}}});
        }
    }
    return layout;
}

void BareSave(const std::wstring& path, const std::vector<BareElement>& elements) {
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
    ComPtr<IXMLDOMElement> folder;
    for (const auto& [tag, attributes] : elements) {
        ComPtr<IXMLDOMElement> element;
        document->createElement(BstrOf(tag).Get(), &element);
        if (!root) {
            document->putref_documentElement(element.Get());
            root = folder = element;
        } else if (tag == L"Folder") {
            root->appendChild(element.Get(), nullptr);
            folder = element;
        } else {
            folder->appendChild(element.Get(), nullptr);
        }
        for (const auto& [name, value] : attributes)
            element->setAttribute(BstrOf(name).Get(), CVariant(value).Get());
    }
    const std::wstring beside = path + L".bare";
    document->save(CVariant(beside).Get());
    ::FlushFileBuffers(
        UniqueFile(::CreateFileW(beside.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr))
            .Get());
    ::MoveFileExW(beside.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

ComPtr<IXMLDOMElement> BareRead(const std::wstring& path) {
    const UniqueFile file(
        ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    std::string bytes(::GetFileSize(file.Get(), nullptr), '\0');
    DWORD read = 0;
    ::ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
    const auto document = NewDomDocument();
    ParseBytes(*document.Get(), bytes);
    ComPtr<IXMLDOMElement> root;
    document->get_documentElement(&root);
    return root;
}

void BareNodes(IXMLDOMNode& node) {
    UniqueBstr name;
    node.get_nodeName(name.Put());
    ComPtr<IXMLDOMNamedNodeMap> attributes;
    node.get_attributes(&attributes);
    ComPtr<IXMLDOMNode> attribute;
    while (attributes && attributes->nextNode(&attribute) == S_OK && attribute) {
        attribute->get_nodeName(name.Put());
        CVariant value;
        attribute->get_nodeValue(&value.Get());
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
