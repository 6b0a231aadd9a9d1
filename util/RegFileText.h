// The text of a .reg file, as the system's registry editor writes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

struct RegFileValue {
    std::wstring name;  // empty for the default value
    bool removed = false;
    std::uint32_t type = 0;
    std::vector<std::byte> data;

    friend bool operator==(const RegFileValue&, const RegFileValue&) = default;
};

struct RegFileKey {
    std::wstring path;  // with the hive's full name before it
    bool removed = false;
    std::vector<RegFileValue> values;

    friend bool operator==(const RegFileKey&, const RegFileKey&) = default;
};

// Writing, piece by piece, because a key can be large. The text is UTF-16 where it becomes a file.

/// What the file begins with, the mark of its byte order included.
std::wstring_view RegFileHeader();
/// A file is a list of lines: a name with a line break in it, or a zero, can't be written.
bool IsRegFileName(std::wstring_view name);
/// The line that begins a key, or removes it with all that it holds.
void AppendRegKey(std::wstring& text, std::wstring_view path, bool removed);
/// Gets a piece of the text, which is taken away then, and gives a system error to stop.
using RegTextSink = std::function<std::uint32_t(std::wstring_view piece)>;
/// So many characters are worth a write, and still lie in the processor's cache then. Fewer are not given to
/// the sink.
inline constexpr std::size_t kRegTextAtOnce = 1U << 16;
/// Whatever the type, reading the file gives the same bytes again. The sink is called within a large value,
/// too; its error is given back.
std::uint32_t AppendRegValue(std::wstring& text, std::wstring_view name, std::uint32_t type,
                             std::span<const std::byte> data, const RegTextSink& sink = {});
void AppendRemovedRegValue(std::wstring& text, std::wstring_view name);
/// A key with its values.
void AppendRegKey(std::wstring& text, const RegFileKey& key);

/// Reads only what the functions above write, to the character: others can hide a key from one reader that
/// another one finds. Nothing for any other text.
std::optional<std::vector<RegFileKey>> ParseRegFile(std::wstring_view text);
