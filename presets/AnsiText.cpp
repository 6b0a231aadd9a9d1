#include "AnsiText.h"

#include <windows.h>

namespace {

std::string ToAnsi(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const int size = ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

std::wstring FromAnsi(std::string_view bytes) {
    const int length = static_cast<int>(bytes.size());
    const int size = ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(size), L'\0');
    ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, text.data(), size);
    return text;
}

}  // namespace

const TextConversion& AnsiText() {
    static const TextConversion conversion{.toAnsi = &ToAnsi, .fromAnsi = &FromAnsi};
    return conversion;
}
