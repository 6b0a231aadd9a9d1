#include "InterfaceLanguage.h"

#include "AsciiCase.h"

namespace {

struct InterfaceLanguage {
    std::wstring_view name;
    std::uint16_t id;
};

#define INTERFACE_LANGUAGE(name, id, ...) {L## #name, id},
constexpr InterfaceLanguage kLanguages[] = {
#include "Languages.inc"
};
#undef INTERFACE_LANGUAGE

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
    return kLanguages[0].id;
}
