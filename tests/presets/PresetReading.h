// Preset files in memory, and what is read from them, as text.
#pragma once

#include <algorithm>

#include "MemorySink.h"
#include "PresetWalk.h"

namespace support {

inline const PresetPlugin kHall = {"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}"_guid,
                                   "{B84F08B7-2DF0-438B-A5B4-E7700FE06A18}"_guid, L"Hall"};
inline const PresetPlugin kRoom = {"{11111111-2222-3333-4444-555555555555}"_guid,
                                   "{EA928480-B8A3-43C0-8FA0-CCAD36569849}"_guid, L"Room"};

/// The plain conversions of a code page like Western Europe's.
inline std::string ToLatin1(std::wstring_view text) {
    std::string bytes;
    for (const wchar_t c : text) bytes += c < 0x100 ? static_cast<char>(c) : '?';
    return bytes;
}
inline std::wstring FromLatin1(std::string_view bytes) {
    const auto* first = reinterpret_cast<const unsigned char*>(bytes.data());
    return {first, first + bytes.size()};
}
inline const TextConversion kLatin1 = {.toAnsi = &ToLatin1, .fromAnsi = &FromLatin1};

class MemorySource : public IByteSource {
  public:
    explicit MemorySource(std::span<const std::byte> bytes) : m_bytes(bytes) {}
    void Read(std::span<std::byte> bytes) override {
        if (bytes.size() > m_bytes.size() - m_position) throw StreamError();
        std::ranges::copy(m_bytes.subspan(m_position, bytes.size()), bytes.begin());
        m_position += bytes.size();
    }
    void Seek(std::uint64_t position) override {
        if (position > m_bytes.size()) throw StreamError();
        m_position = static_cast<std::size_t>(position);
    }
    std::uint64_t Position() const override { return m_position; }
    std::uint64_t Size() const override { return m_bytes.size(); }

  private:
    std::span<const std::byte> m_bytes;
    std::size_t m_position = 0;
};

template <typename TWork>
auto WithReader(std::span<const std::byte> file, TWork&& work) {
    MemorySource source(file);
    CPresetFileReader reader(source, kLatin1);
    return work(reader);
}

inline std::string Ascii(const std::wstring& text) {
    std::string ascii;
    for (const wchar_t c : text)
        ascii += c < 0x7F ? std::string(1, static_cast<char>(c)) : "<" + std::to_string(c) + ">";
    return ascii;
}

/// The result of a way through a file, and behind it what was kept or listed.
template <typename TWay>
std::string Read(std::string_view file, TWay&& way) {
    static constexpr const char* kCodes[] = {"failed", "nothing", "no preset file"};
    std::string text;
    const PresetKeeper keep = [&](std::size_t plugin, const ImportedPreset& preset) {
        if (preset.data.empty()) return false;
        text +=
            " " + std::to_string(plugin) + ":" + std::to_string(preset.type) + ":" + Ascii(preset.name) + "=";
        for (const std::byte b : preset.data) text += std::to_integer<char>(b);
        return true;
    };
    const PresetPreview preview = {.add =
                                       [&](const std::wstring& line, std::int32_t position) {
                                           text += " " + Ascii(line);
                                           if (position != kNoPreset) text += "@" + std::to_string(position);
                                       },
                                   .notAPresetFile = L"no",
                                   .goesOn = L"more"};
    const int result = WithReader(std::as_bytes(std::span(file)),
                                  [&](CPresetFileReader& reader) { return way(reader, keep, preview); });
    return (result < 0 ? kCodes[result - kPresetIoFailure] : std::to_string(result)) + text;
}

inline std::string ImportOne(std::string_view file, const PresetSelection* selection = nullptr) {
    return Read(file,
                [&](auto& reader, auto& keep, auto&) { return ImportFor(reader, kHall, selection, keep); });
}
inline std::string ListAll(std::string_view file) {
    return Read(file, [](auto& reader, auto&, auto& preview) { return ListContents(reader, preview); });
}
inline std::string ReadInAllWays(std::string_view file) {
    const PresetPlugin plugins[] = {kHall, kRoom};
    const auto both = [&](auto& reader, auto& keep, auto&) {
        return ImportForSeveral(reader, plugins, keep);
    };
    const auto list = [](auto& reader, auto&, auto& preview) {
        return ListForPlugin(reader, kHall, preview);
    };
    return "import " + ImportOne(file) + "\nboth   " + Read(file, both) + "\nlist   " + Read(file, list) +
           "\nall    " + ListAll(file) + "\n";
}

}  // namespace support
