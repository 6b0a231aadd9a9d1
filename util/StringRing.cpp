#include "StringRing.h"

#include <array>

#include "Resources.h"

const wchar_t* LoadRingText(UINT id) {
    static std::array<std::array<wchar_t, kRingCharacters>, kRingBuffers> ring;
    static unsigned next = 0;
    next = (next + 1) % kRingBuffers;
    auto& buffer = ring[next];
    const std::wstring text = LoadText(id);
    if (text.empty()) return L"";
    buffer[text.copy(buffer.data(), kRingCharacters - 1)] = L'\0';
    return buffer.data();
}
