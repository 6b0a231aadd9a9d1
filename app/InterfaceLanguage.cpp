#include "InterfaceLanguage.h"

#include "AsciiCase.h"

namespace {

struct InterfaceLanguage {
    std::wstring_view name;
    std::uint16_t id;
};

constexpr InterfaceLanguage kLanguages[] = {
    {L"English", 1033},    {L"Japanese", 1041}, {L"German", 1031},  {L"French", 1036},  {L"Spanish", 3082},
    {L"Portuguese", 1046}, {L"Italian", 1040},  {L"Chinese", 2052}, {L"Russian", 1049},
};
constexpr std::uint16_t kEnglish = 1033;

/// The low ten bits of an identifier name the language, the rest its country.
constexpr std::uint16_t Primary(std::uint16_t id) { return id & 0x3FF; }

}  // namespace

std::optional<std::uint16_t> FindInterfaceLanguage(std::wstring_view name) {
    for (const InterfaceLanguage& language : kLanguages) {
        if (EqualsIgnoringCase(language.name, name)) return language.id;
    }
    return std::nullopt;
}

std::uint16_t NearestInterfaceLanguage(std::uint16_t systemLanguage) {
    for (const InterfaceLanguage& language : kLanguages) {
        if (Primary(language.id) == Primary(systemLanguage)) return language.id;
    }
    return kEnglish;
}
