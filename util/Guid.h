// A class id as plain data, the same sixteen bytes as the system's GUID; and class ids written in code.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string_view>

struct Guid {
    std::uint32_t data1 = 0;
    std::uint16_t data2 = 0;
    std::uint16_t data3 = 0;
    std::array<std::uint8_t, 8> data4{};

    constexpr bool IsNull() const { return *this == Guid{}; }
    friend constexpr bool operator==(const Guid&, const Guid&) = default;
};
static_assert(sizeof(Guid) == 16);

/// Orders by the sixteen bytes as they lie in memory, not by the text form.
struct GuidByteOrder {
    bool operator()(const Guid& a, const Guid& b) const { return std::memcmp(&a, &b, sizeof(Guid)) < 0; }
};

struct GuidHash {
    std::size_t operator()(const Guid& guid) const {
        std::array<std::uint64_t, 2> words;
        std::memcpy(words.data(), &guid, sizeof(Guid));
        return std::hash<std::uint64_t>()(words[0] ^ (words[1] * 0x9E3779B97F4A7C15ULL));
    }
};

namespace guid_literal {

constexpr std::uint32_t Digit(char c) {
    if (c >= '0' && c <= '9') return static_cast<std::uint32_t>(c - '0');
    if (c >= 'A' && c <= 'F') return static_cast<std::uint32_t>(c - 'A' + 10);
    throw "a class id is written in upper-case hexadecimal digits";
}

constexpr std::uint32_t Number(std::string_view digits) {
    std::uint32_t value = 0;
    for (const char c : digits) value = value * 16 + Digit(c);
    return value;
}

}  // namespace guid_literal

/// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}"_guid
consteval Guid operator""_guid(const char* characters, std::size_t length) {
    using guid_literal::Number;
    const std::string_view text(characters, length);
    if (length != 38 || text[0] != '{' || text[9] != '-' || text[14] != '-' || text[19] != '-' ||
        text[24] != '-' || text[37] != '}') {
        throw "a class id has the form {XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}";
    }
    Guid guid{Number(text.substr(1, 8)),
              static_cast<std::uint16_t>(Number(text.substr(10, 4))),
              static_cast<std::uint16_t>(Number(text.substr(15, 4))),
              {}};
    constexpr std::array<std::size_t, 8> kPlaces = {20, 22, 25, 27, 29, 31, 33, 35};
    for (std::size_t i = 0; i < kPlaces.size(); ++i) {
        guid.data4[i] = static_cast<std::uint8_t>(Number(text.substr(kPlaces[i], 2)));
    }
    return guid;
}
