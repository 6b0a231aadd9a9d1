// Floors: layouts by the bare calls to parser and control.
#pragma once

#include <windows.h>

#include <algorithm>
#include <msxml2.h>
#include <string>
#include <utility>
#include <vector>
#include <wrl/client.h>

#include "Controls.h"

/// What a bench layout looks like: a folder of twenty items after the other, among them separators; or the
/// same items without any folder; or plug-ins alone, in no order.
enum class Shape { Folders, Flat, Mixed };
enum class BenchItem { Folder, Plugin, Separator };
inline constexpr int kItemsInFolder = 20;
BenchItem KindOf(Shape shape, int number);
std::wstring NameOf(Shape shape, int number, int size);

/// Has `insert` put each item in front of what its parent has already: to add behind others, the control
/// would walk all of them each time. It is given the parent and the item's number, and gives the item.
template <typename TInsert>
void InsertAll(Shape shape, int size, TInsert&& insert) {
    const int own = shape == Shape::Folders ? 1 : 0;
    for (int first = (size - 1) / kItemsInFolder * kItemsInFolder; first >= 0; first -= kItemsInFolder) {
        const HTREEITEM folder = own ? insert(nullptr, first) : nullptr;
        const int end = std::min(first + kItemsInFolder, size);
        for (int number = end - 1; number >= first + own; --number) insert(folder, number);
    }
}

/// A control of its own beside another, without the program's extensions.
class CBareTree : public CTreeView {
  public:
    explicit CBareTree(const CTreeView& other);
    ~CBareTree() { ::DestroyWindow(m_hwnd); }
    CBareTree(const CBareTree&) = delete;
    CBareTree& operator=(const CBareTree&) = delete;

    /// Clears the tree and puts as many items into it.
    void Fill(Shape shape, int size) const;
    std::vector<HTREEITEM> EverySecond() const;
};

/// An element of a document: the first one is the root, a folder holds those up to the next one.
struct BareElement {
    std::wstring tag;
    std::vector<std::pair<std::wstring, std::wstring>> attributes;
};
std::vector<BareElement> BareLayout(Shape shape, int size);
/// Builds a document and writes it safely: beside the old file, which it replaces when it is on the disk.
void BareSave(const std::wstring& path, const std::vector<BareElement>& elements);

/// Reads a file by way of the memory: the parser takes much longer to open one by itself.
Microsoft::WRL::ComPtr<IXMLDOMElement> BareRead(const std::wstring& path);
/// Each element's name, and its attributes' names and values.
void BareNodes(IXMLDOMNode& node);
