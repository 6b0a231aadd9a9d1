#include "Resources.h"

#include <cstddef>

namespace {

constexpr LANGID kEnglish = 1033;

LANGID g_language = kEnglish;

HINSTANCE ThisModule() { return ::GetModuleHandleW(nullptr); }

std::span<const std::byte> BytesOf(HRSRC resource) {
    if (!resource) return {};
    const HGLOBAL memory = ::LoadResource(ThisModule(), resource);
    const void* bytes = memory ? ::LockResource(memory) : nullptr;
    if (!bytes) return {};
    return {static_cast<const std::byte*>(bytes), ::SizeofResource(ThisModule(), resource)};
}

/// The string of one language, empty when that language does not have it.
std::wstring TextIn(LANGID language, UINT id) {
    // Texts come in bundles of sixteen, each text behind its length.
    const auto bundle =
        BytesOf(::FindResourceExW(ThisModule(), RT_STRING, MAKEINTRESOURCEW((id >> 4) + 1), language));
    const auto* text = reinterpret_cast<const wchar_t*>(bundle.data());
    std::size_t left = bundle.size() / sizeof(wchar_t);
    for (UINT entry = 0; left > 0; ++entry) {
        const auto length = static_cast<std::size_t>(*text);
        if (length >= left) return {};
        if (entry == (id & 15U)) return {text + 1, length};
        text += 1 + length;
        left -= 1 + length;
    }
    return {};
}

}  // namespace

void SetResourceLanguage(LANGID language) { g_language = language; }

std::wstring LoadText(UINT id) {
    std::wstring text = TextIn(g_language, id);
    if (text.empty() && g_language != kEnglish) text = TextIn(kEnglish, id);
    return text;
}

std::span<const std::byte> LoadResourceBytes(const wchar_t* type, UINT id) {
    HRSRC resource = ::FindResourceExW(ThisModule(), type, MAKEINTRESOURCEW(id), g_language);
    if (!resource) resource = ::FindResourceExW(ThisModule(), type, MAKEINTRESOURCEW(id), kEnglish);
    return BytesOf(resource);
}

const DLGTEMPLATE* LoadDialogTemplate(UINT id) {
    return reinterpret_cast<const DLGTEMPLATE*>(LoadResourceBytes(RT_DIALOG, id).data());
}

UniqueMenu LoadMenuResource(UINT id) {
    const auto bytes = LoadResourceBytes(RT_MENU, id);
    return UniqueMenu(bytes.empty() ? nullptr : ::LoadMenuIndirectW(bytes.data()));
}

UniqueIcon LoadIconResource(UINT id, int width, int height) {
    return UniqueIcon(static_cast<HICON>(
        ::LoadImageW(ThisModule(), MAKEINTRESOURCEW(id), IMAGE_ICON, width, height, LR_DEFAULTCOLOR)));
}
