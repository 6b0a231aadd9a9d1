#include "LanguageResources.h"

#include <algorithm>

#include "Handles.h"

namespace res_test {

std::span<const std::byte> ResourceIn(const Language& language, const wchar_t* type, UINT id) {
    const HMODULE module = ::GetModuleHandleW(nullptr);
    const HRSRC resource = ::FindResourceExW(module, type, MAKEINTRESOURCEW(id), language.id);
    if (!resource) return {};
    const void* bytes = ::LockResource(::LoadResource(module, resource));
    return {static_cast<const std::byte*>(bytes), ::SizeofResource(module, resource)};
}

std::vector<UINT> ResourceIds(const wchar_t* type) {
    std::vector<UINT> ids;
    const auto collect = [](HMODULE, LPCWSTR, auto name, LONG_PTR found) -> BOOL {
        if (IS_INTRESOURCE(name)) {
            reinterpret_cast<std::vector<UINT>*>(found)->push_back(LOWORD(reinterpret_cast<UINT_PTR>(name)));
        }
        return TRUE;
    };
    ::EnumResourceNamesW(nullptr, type, collect, reinterpret_cast<LONG_PTR>(&ids));
    std::ranges::sort(ids);
    return ids;
}

std::optional<std::wstring> TextIn(const Language& language, UINT id) {
    // Texts come in bundles of sixteen, each text behind its length.
    const auto bundle = ResourceIn(language, RT_STRING, id / 16 + 1);
    const std::span texts(reinterpret_cast<const wchar_t*>(bundle.data()), bundle.size() / sizeof(wchar_t));
    std::size_t at = 0;
    for (UINT skipped = 0; skipped < id % 16 && at < texts.size(); ++skipped) at += 1U + texts[at];
    if (at >= texts.size() || texts[at] == 0) return std::nullopt;
    return std::wstring(texts.data() + at + 1, texts[at]);
}

std::vector<MenuCommand> MenuIn(const Language& language, UINT id) {
    const auto bytes = ResourceIn(language, RT_MENU, id);
    const UniqueMenu menu(bytes.empty() ? nullptr : ::LoadMenuIndirectW(bytes.data()));
    const HMENU shown = ::GetSubMenu(menu.Get(), 0);
    std::vector<MenuCommand> commands;
    for (int i = 0; i < ::GetMenuItemCount(shown); ++i) {
        wchar_t text[128] = {};
        ::GetMenuStringW(shown, static_cast<UINT>(i), text, 128, MF_BYPOSITION);
        commands.push_back({::GetMenuItemID(shown, i), text});
    }
    return commands;
}

}  // namespace res_test
