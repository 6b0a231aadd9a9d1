#include "PresetName.h"

#include <algorithm>
#include <array>

#include "AsciiCase.h"

namespace {

constexpr std::size_t kMaxName = 255;
constexpr wchar_t kFirstPrintable = L' ';
constexpr std::wstring_view kSeparators = L"\\/:*?\"<>|";

constexpr std::array<std::wstring_view, 7> kDevices = {L"CON",    L"PRN",     L"AUX",   L"NUL",
                                                       L"CONIN$", L"CONOUT$", L"CLOCK$"};
constexpr std::array<std::wstring_view, 2> kNumberedDevices = {L"COM", L"LPT"};
// The superscript digits count as digits in these names.
constexpr std::wstring_view kDeviceDigits = L"0123456789\u00B9\u00B2\u00B3";

/// The devices are there in every folder and with every extension: "nul.txt" is the null device.
bool IsDevice(std::wstring_view name) {
    std::wstring_view stem = name.substr(0, name.find(L'.'));
    stem = stem.substr(0, stem.find_last_not_of(L' ') + 1);
    const auto isStem = [stem](std::wstring_view device) { return EqualsIgnoringCase(stem, device); };
    if (std::ranges::any_of(kDevices, isStem)) return true;
    if (stem.size() != 4 || kDeviceDigits.find(stem.back()) == std::wstring_view::npos) return false;
    return std::ranges::any_of(kNumberedDevices, [stem](std::wstring_view device) {
        return EqualsIgnoringCase(stem.substr(0, 3), device);
    });
}

}  // namespace

std::optional<std::wstring_view> PresetFileName(std::wstring_view name) {
    // Of dots and blanks alone, nothing is left.
    name = name.substr(0, name.find_last_not_of(L". ") + 1);
    if (name.empty() || name.size() > kMaxName) return std::nullopt;
    const bool plain = std::ranges::none_of(name, [](wchar_t c) {
        return c < kFirstPrintable || kSeparators.find(c) != std::wstring_view::npos;
    });
    return plain && !IsDevice(name) ? std::optional(name) : std::nullopt;
}
