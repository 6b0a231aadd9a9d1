#include "ClsidText.h"

#include <objbase.h>

#include <array>
#include <bit>

GUID ToSystem(const Guid& guid) { return std::bit_cast<GUID>(guid); }

Guid FromSystem(const GUID& guid) { return std::bit_cast<Guid>(guid); }

std::wstring ClsidText(const Guid& guid) {
    std::array<wchar_t, 39> text{};
    ::StringFromGUID2(ToSystem(guid), text.data(), static_cast<int>(text.size()));
    return text.data();
}

std::optional<Guid> ParseClsid(const std::wstring& text) {
    GUID guid{};
    // An empty text would be converted to the null id.
    if (text.empty() || FAILED(::CLSIDFromString(text.c_str(), &guid))) return std::nullopt;
    return FromSystem(guid);
}
