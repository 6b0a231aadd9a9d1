#include "TextBytes.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>

namespace {

/// The first byte of each character comes first, or else the second.
std::optional<std::wstring> TextOfUtf16(std::string_view bytes, bool lowFirst) {
    if (bytes.size() % 2 != 0) return std::nullopt;
    std::wstring text;
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        const auto low = static_cast<unsigned char>(bytes[lowFirst ? i : i + 1]);
        const auto high = static_cast<unsigned char>(bytes[lowFirst ? i + 1 : i]);
        text += static_cast<wchar_t>(high << 8 | low);
    }
    return text;
}

}  // namespace

std::string Utf8Of(std::wstring_view text) {
    const int size = static_cast<int>(text.size());
    const auto convert = [&](char* bytes, int room) {
        return ::WideCharToMultiByte(CP_UTF8, 0, text.data(), size, bytes, room, nullptr, nullptr);
    };
    std::string bytes(static_cast<std::size_t>(std::max(convert(nullptr, 0), 0)), '\0');
    convert(bytes.data(), static_cast<int>(bytes.size()));
    return bytes;
}

std::optional<std::wstring> TextOfBytes(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE")) return TextOfUtf16(bytes.substr(2), true);
    if (bytes.starts_with("\xFE\xFF")) return TextOfUtf16(bytes.substr(2), false);
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    if (bytes.empty()) return std::wstring();
    const int size = static_cast<int>(bytes.size());
    const auto convert = [&](wchar_t* text, int room) {
        return ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), size, text, room);
    };
    const int length = convert(nullptr, 0);
    if (length <= 0) return std::nullopt;
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    convert(text.data(), length);
    return text;
}
