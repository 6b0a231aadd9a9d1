// Filling the placeholders of resource texts.
#pragma once

#include <span>
#include <string>
#include <string_view>

/// A value for one placeholder.
class TextArgument {
  public:
    TextArgument(std::wstring_view text) : m_text(text) {}
    TextArgument(int number) : m_text(std::to_wstring(number)) {}
    TextArgument(unsigned number) : m_text(std::to_wstring(number)) {}

    const std::wstring& Text() const { return m_text; }

  private:
    std::wstring m_text;
};

std::wstring FillPlaceholders(std::wstring_view pattern, std::span<const TextArgument> arguments);

/// Replaces each "%s" and "%d" by the next argument, and "%%" by "%". A translation with too many
/// placeholders shows nothing for the surplus ones; with too few, arguments stay unused; any other "%" stands
/// for itself.
template <typename... TArguments>
std::wstring FormatText(std::wstring_view pattern, const TArguments&... arguments) {
    const TextArgument list[] = {TextArgument(arguments)...};
    return FillPlaceholders(pattern, list);
}

/// A caption without the sign that marks its key.
std::wstring WithoutMnemonic(std::wstring caption);
