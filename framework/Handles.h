// Move-only owners of system handles.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <type_traits>
#include <utility>

/// Owns one handle and gives it to a TCloser at the end. THandle() (null) means that nothing is owned.
template <typename THandle, typename TCloser>
class UniqueHandle {
  public:
    UniqueHandle() = default;
    explicit UniqueHandle(THandle handle) : m_handle(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : m_handle(other.Release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other) Reset(other.Release());
        return *this;
    }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;
    ~UniqueHandle() { Reset(); }

    THandle Get() const { return m_handle; }
    explicit operator bool() const { return m_handle != THandle(); }

    /// Gives the handle away; the caller closes it.
    THandle Release() { return std::exchange(m_handle, THandle()); }
    void Reset(THandle handle = THandle()) {
        const THandle old = std::exchange(m_handle, handle);
        if (old != THandle()) TCloser()(old);
    }
    /// For system functions that fill in a handle; an owned one is closed first.
    THandle* Put() {
        Reset();
        return &m_handle;
    }

  private:
    THandle m_handle{};
};

// Types and not lambdas: a lambda in a header would be another type in every file.
namespace closers {
struct Key {
    void operator()(HKEY key) const { ::RegCloseKey(key); }
};
struct Kernel {
    void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
struct Library {
    void operator()(HMODULE library) const { ::FreeLibrary(library); }
};
struct Menu {
    void operator()(HMENU menu) const { ::DestroyMenu(menu); }
};
struct Font {
    void operator()(HFONT font) const { ::DeleteObject(font); }
};
struct Icon {
    void operator()(HICON icon) const { ::DestroyIcon(icon); }
};
struct Bitmap {
    void operator()(HBITMAP bitmap) const { ::DeleteObject(bitmap); }
};
struct ImageList {
    void operator()(HIMAGELIST list) const { ::ImageList_Destroy(list); }
};
struct Dc {
    void operator()(HDC dc) const { ::DeleteDC(dc); }
};
struct File {
    void operator()(HANDLE file) const { ::CloseHandle(file); }
};
struct Global {
    void operator()(HGLOBAL memory) const { ::GlobalFree(memory); }
};
}  // namespace closers

/// Files have a null handle of their own; it counts as none here.
class UniqueFile {
  public:
    UniqueFile() = default;
    explicit UniqueFile(HANDLE file) : m_file(file == INVALID_HANDLE_VALUE ? nullptr : file) {}
    HANDLE Get() const { return m_file.Get(); }
    explicit operator bool() const { return static_cast<bool>(m_file); }
    void Reset() { m_file.Reset(); }

  private:
    UniqueHandle<HANDLE, closers::File> m_file;
};

using UniqueKey = UniqueHandle<HKEY, closers::Key>;
using UniqueKernelHandle = UniqueHandle<HANDLE, closers::Kernel>;
using UniqueLibrary = UniqueHandle<HMODULE, closers::Library>;
using UniqueMenu = UniqueHandle<HMENU, closers::Menu>;
using UniqueFont = UniqueHandle<HFONT, closers::Font>;
using UniqueIcon = UniqueHandle<HICON, closers::Icon>;
using UniqueBitmap = UniqueHandle<HBITMAP, closers::Bitmap>;
using UniqueImageList = UniqueHandle<HIMAGELIST, closers::ImageList>;
using UniqueDc = UniqueHandle<HDC, closers::Dc>;  // of one that was created, not of a window's
using UniqueGlobal = UniqueHandle<HGLOBAL, closers::Global>;
