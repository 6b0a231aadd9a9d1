#include "AppDataRoot.h"

#include <windows.h>

#include <array>

const std::wstring& AppDataRoot() {
    static std::wstring root;
    if (root.empty()) {
        std::array<wchar_t, 260> buffer{};
        const DWORD length = ::GetEnvironmentVariableW(L"CorvaneAppDataRoot", buffer.data(),
                                                       static_cast<DWORD>(buffer.size()));
        // A longer value is reported by the size that it would need.
        if (length < buffer.size()) root.assign(buffer.data(), length);
    }
    return root;
}
