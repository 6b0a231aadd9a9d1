#include "Clipboard.h"

#include <cstring>

#include "Files.h"
#include "Handles.h"

bool CopyText(HWND owner, const std::wstring& text) {
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    UniqueGlobal memory(::GlobalAlloc(GMEM_MOVEABLE, bytes));
    void* place = memory ? ::GlobalLock(memory.Get()) : nullptr;
    if (!place) return false;
    std::memcpy(place, text.c_str(), bytes);
    ::GlobalUnlock(memory.Get());
    // Programs that keep what was copied open the clipboard with each change.
    CPatience patience;
    while (!::OpenClipboard(owner)) {
        if (!patience.Waits(ERROR_SHARING_VIOLATION)) return false;
    }
    const bool copied = ::EmptyClipboard() && ::SetClipboardData(CF_UNICODETEXT, memory.Get());
    if (copied) memory.Release();  // it is the system's from now on
    ::CloseClipboard();
    return copied;
}
