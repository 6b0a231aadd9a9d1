#include "SystemErrorText.h"

std::wstring SystemErrorText(DWORD error) {
    constexpr DWORD kFlags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    std::wstring text(1024, L'\0');
    text.resize(
        ::FormatMessageW(kFlags, nullptr, error, 0, text.data(), static_cast<DWORD>(text.size()), nullptr));
    text.erase(text.find_last_not_of(L" \r\n") + 1);
    return text.empty() ? std::to_wstring(error) : text;
}
