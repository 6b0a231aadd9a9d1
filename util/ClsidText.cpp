#include "ClsidText.h"

#include <objbase.h>

#include <bit>
#include <cstddef>
#include <string_view>

namespace {

void WriteDigits(std::wstring& text, std::size_t begin, std::size_t length, std::uint32_t value) {
    constexpr std::wstring_view kDigits = L"0123456789ABCDEF";
    for (std::size_t at = begin + length; at > begin; value >>= 4) text[--at] = kDigits[value & 0xF];
}

}  // namespace

GUID ToSystem(const Guid& guid) { return std::bit_cast<GUID>(guid); }

Guid FromSystem(const GUID& guid) { return std::bit_cast<Guid>(guid); }

std::wstring ClsidText(const Guid& guid) {
    // Not by the system's function, which takes longer than all else that is written of a plug-in.
    std::wstring text = L"{00000000-0000-0000-0000-000000000000}";
    WriteDigits(text, 1, 8, guid.data1);
    WriteDigits(text, 10, 4, guid.data2);
    WriteDigits(text, 15, 4, guid.data3);
    std::size_t at = 20;
    for (const std::uint8_t number : guid.data4) {
        if (text[at] == L'-') ++at;
        WriteDigits(text, at, 2, number);
        at += 2;
    }
    return text;
}

std::optional<Guid> ParseClsid(const std::wstring& text) {
    GUID guid{};
    // An empty text would be converted to the null id.
    if (text.empty() || FAILED(::CLSIDFromString(text.c_str(), &guid))) return std::nullopt;
    return FromSystem(guid);
}
