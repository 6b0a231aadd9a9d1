// Move-only owners of system handles.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <utility>

/// Owns one handle and gives it to Close at the end. THandle() (null) means that nothing is owned.
template <typename THandle, auto Close>
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
        if (old != THandle()) Close(old);
    }
    /// For system functions that fill in a handle; an owned one is closed first.
    THandle* Put() {
        Reset();
        return &m_handle;
    }

  private:
    THandle m_handle{};
};

using UniqueKey = UniqueHandle<HKEY, &::RegCloseKey>;
using UniqueKernelHandle = UniqueHandle<HANDLE, &::CloseHandle>;
using UniqueLibrary = UniqueHandle<HMODULE, &::FreeLibrary>;
using UniqueMenu = UniqueHandle<HMENU, &::DestroyMenu>;
using UniqueFont = UniqueHandle<HFONT, &::DeleteObject>;
using UniqueIcon = UniqueHandle<HICON, &::DestroyIcon>;
using UniqueBitmap = UniqueHandle<HBITMAP, &::DeleteObject>;
using UniqueImageList = UniqueHandle<HIMAGELIST, &::ImageList_Destroy>;
using UniqueDc = UniqueHandle<HDC, &::DeleteDC>;  // of one that was created, not of a window's
using UniqueGlobal = UniqueHandle<HGLOBAL, &::GlobalFree>;

/// Looks for what the library exports under that name; `function` is null when it does not.
template <typename TFunction>
bool FindFunction(HMODULE library, const char* name, TFunction*& function) {
    // By way of void*, because the compiler warns of a direct cast between two function types.
    function = reinterpret_cast<TFunction*>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
    return function != nullptr;
}

/// Files have a null handle of their own; it counts as none here.
class UniqueFile : public UniqueKernelHandle {
  public:
    UniqueFile() = default;
    explicit UniqueFile(HANDLE file) : UniqueKernelHandle(file == INVALID_HANDLE_VALUE ? nullptr : file) {}
};
