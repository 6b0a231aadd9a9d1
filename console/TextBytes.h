// Texts as bytes: files and pipes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What is no text, such as half a surrogate pair, becomes the character for what is unknown.
std::string Utf8Of(std::wstring_view text);

/// UTF-8 with or without its mark, or UTF-16 with one; nothing for bytes that are neither.
std::optional<std::wstring> TextOfBytes(std::string_view bytes);
