#pragma once

#include <windows.h>

#include <shellapi.h>

#include <string>

/// Files that were dropped on a window, for as long as it handles the message.
class CDroppedFiles {
  public:
    explicit CDroppedFiles(HDROP drop) : m_drop(drop) {}
    ~CDroppedFiles() { ::DragFinish(m_drop); }
    CDroppedFiles(const CDroppedFiles&) = delete;
    CDroppedFiles& operator=(const CDroppedFiles&) = delete;

    UINT Count() const { return ::DragQueryFileW(m_drop, 0xFFFFFFFF, nullptr, 0); }
    /// The system looks for it from the first one on, each time.
    std::wstring Path(UINT index) const {
        std::wstring path(::DragQueryFileW(m_drop, index, nullptr, 0) + std::size_t{1}, L'\0');
        path.resize(::DragQueryFileW(m_drop, index, path.data(), static_cast<UINT>(path.size())));
        return path;
    }

  private:
    HDROP m_drop;
};
