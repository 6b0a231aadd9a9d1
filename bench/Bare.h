// Floors: the bare calls to the system, with nothing done to the answers.
#pragma once

#include <windows.h>

#include <array>
#include <string>
#include <vector>

class CBareKey {
  public:
    CBareKey(HKEY root, const std::wstring& path, REGSAM access = KEY_READ) {
        ::RegOpenKeyExW(root, path.c_str(), 0, access, &m_key);
    }
    ~CBareKey() { ::RegCloseKey(m_key); }
    CBareKey(const CBareKey&) = delete;
    CBareKey& operator=(const CBareKey&) = delete;

    HKEY Handle() const { return m_key; }
    std::wstring Ask(const wchar_t* value) const;
    void Set(const wchar_t* value, DWORD type, const void* data, std::size_t size) const {
        ::RegSetValueExW(m_key, value, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size));
    }
    template <typename TWork>
    void ForSubkeys(TWork&& work) const {
        std::array<wchar_t, 260> name;
        DWORD length = name.size();
        for (DWORD i = 0; ::RegEnumKeyExW(m_key, i, name.data(), &length, nullptr, nullptr, nullptr,
                                          nullptr) == ERROR_SUCCESS;
             ++i, length = name.size())
            work(name.data());
    }
    /// Up to the first value whose data are longer than `most`; 0: these are not asked for.
    template <typename TWork>
    void ForValues(TWork&& work, std::size_t most = 4096) const {
        std::array<wchar_t, 520> name;
        std::vector<BYTE> data(most);
        for (DWORD i = 0;; ++i) {
            DWORD length = name.size();
            auto size = static_cast<DWORD>(most);
            if (::RegEnumValueW(m_key, i, name.data(), &length, nullptr, nullptr, data.data(),
                                most > 0 ? &size : nullptr) != ERROR_SUCCESS)
                return;
            work(data.data(), size);
        }
    }

  private:
    HKEY m_key = nullptr;
};

/// What becomes of the plug-ins' files: nothing; their paths are read; whether they are there is asked, too.
enum class BareFiles { None, Read, Asked };
/// Asks the system for all plug-ins. Gives the number of filters.
int BareEnumeration(BareFiles files = BareFiles::None);
