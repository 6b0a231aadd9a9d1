#include "PresetFile.h"

#include <algorithm>
#include <array>
#include <limits>

namespace {

constexpr std::uint16_t kMagic = 0x5350;  // "PS"
constexpr std::uint16_t kVersion = 1;

constexpr std::size_t kMaxAnsi = 4095;  // bytes of a written text, with its terminator

/// More than a registry name can have, and than a list can show: what follows in a text is passed over, so
/// that a file can't claim memory for it.
constexpr std::uint32_t kMaxText = 0x10000;

std::string CutToBytes(std::wstring_view text, std::size_t limit, const TextConversion& conversion) {
    std::string bytes = conversion.toAnsi(text);
    // Shortened by characters, not by bytes: half of a multi-byte character is no text.
    while (bytes.size() > limit && !text.empty()) {
        // Of a name that is far too long, many at a time: no character has more than eight bytes.
        text.remove_suffix(std::clamp<std::size_t>((bytes.size() - limit) / 8, 1, text.size()));
        bytes = conversion.toAnsi(text);
    }
    return bytes;
}

}  // namespace

std::uint32_t CPresetFileReader::ReadNumber(int bytes) {
    std::array<std::byte, 4> raw{};
    m_source.Read(std::span(raw).first(static_cast<std::size_t>(bytes)));
    std::uint32_t value = 0;
    for (std::size_t i = raw.size(); i-- > 0;) value = value << 8 | std::to_integer<std::uint32_t>(raw[i]);
    return value;
}

Guid CPresetFileReader::ReadGuid() {
    Guid guid;
    guid.data1 = ReadNumber(4);
    guid.data2 = Read16();
    guid.data3 = Read16();
    m_source.Read(std::as_writable_bytes(std::span(guid.data4)));
    return guid;
}

std::uint32_t CPresetFileReader::ReadLength() {
    const std::int32_t length = Read32();
    if (length < 0 || static_cast<std::uint64_t>(length) > Left()) throw StreamError();
    return static_cast<std::uint32_t>(length);
}

std::wstring CPresetFileReader::ReadString() {
    const std::uint32_t length = ReadLength();
    if (length <= 2) return ReadAnsi(length);
    const std::uint64_t start = Position();
    std::array<std::byte, 2> first{};
    m_source.Read(first);
    m_source.Seek(start);
    return first[1] == std::byte{0} ? ReadUtf16(length) : ReadAnsi(length);
}

std::wstring CPresetFileReader::ReadAnsi(std::uint32_t bytes) {
    std::string text(std::min(bytes, kMaxText), '\0');
    m_source.Read(std::as_writable_bytes(std::span(text)));
    Skip(bytes - text.size());
    return m_text.fromAnsi(std::string_view(text).substr(0, text.find('\0')));
}

std::wstring CPresetFileReader::ReadUtf16(std::uint32_t characters) {
    if (std::uint64_t{characters} * 2 > Left()) throw StreamError();
    std::vector<std::byte> raw(std::size_t{std::min(characters, kMaxText)} * 2);
    m_source.Read(raw);
    Skip(std::uint64_t{characters} * 2 - raw.size());
    std::wstring text(raw.size() / 2, L'\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
        text[i] = static_cast<wchar_t>(std::to_integer<unsigned>(raw[2 * i]) |
                                       std::to_integer<unsigned>(raw[2 * i + 1]) << 8);
    }
    text.resize(std::min(text.find(L'\0'), text.size()));
    return text;
}

std::optional<PresetFileHeader> CPresetFileReader::ReadHeader() {
    if (Left() < 2 || Read16() != kMagic || Left() < 2) return std::nullopt;
    PresetFileHeader header{.version = Read16()};
    if (header.version == 0) return header;
    if (Left() < 4) return std::nullopt;
    header.plugins = Read32();
    return header.plugins < 1 ? std::nullopt : std::optional(header);
}

PluginRecordHead CPresetFileReader::ReadPlugin(std::uint16_t version) {
    PluginRecordHead plugin;
    plugin.clsid = ReadGuid();
    if (version != 0) plugin.category = ReadGuid();
    plugin.presets = Read32();
    plugin.name = ReadString();
    return plugin;
}

PresetRecordHead CPresetFileReader::ReadPreset() {
    PresetRecordHead preset;
    preset.type = Read32();
    preset.name = ReadString();
    preset.length = ReadLength();
    return preset;
}

void CPresetFileReader::ReadData(const PresetRecordHead& preset, std::vector<std::byte>& data) {
    data.resize(preset.length);
    m_source.Read(data);
}

void CPresetFileWriter::WriteNumber(std::uint32_t value, int bytes) {
    std::array<std::byte, 4> raw{};
    for (std::byte& byte : raw) {
        byte = static_cast<std::byte>(value & 0xFF);
        value >>= 8;
    }
    m_sink.Write(std::span(raw).first(static_cast<std::size_t>(bytes)));
}

void CPresetFileWriter::WriteGuid(const Guid& guid) {
    WriteNumber(guid.data1, 4);
    WriteNumber(guid.data2, 2);
    WriteNumber(guid.data3, 2);
    m_sink.Write(std::as_bytes(std::span(guid.data4)));
}

void CPresetFileWriter::WriteString(std::wstring_view text) {
    // Kept: a code page with more than two bytes a character loses the end of a long name.
    const std::size_t limit = std::min(2 * text.size() + 4, kMaxAnsi);
    const std::string bytes = CutToBytes(text, limit - 1, m_text);
    WriteNumber(static_cast<std::uint32_t>(bytes.size() + 1), 4);
    m_sink.Write(std::as_bytes(std::span(bytes.c_str(), bytes.size() + 1)));
}

void CPresetFileWriter::WriteHeader(std::int32_t plugins) {
    WriteNumber(kMagic, 2);
    WriteNumber(kVersion, 2);
    WriteNumber(static_cast<std::uint32_t>(plugins), 4);
}

std::uint64_t CPresetFileWriter::WritePlugin(const Guid& clsid, const Guid& category, std::int32_t presets,
                                             const std::wstring& name) {
    WriteGuid(clsid);
    WriteGuid(category);
    const std::uint64_t countPlace = Position();
    WriteNumber(static_cast<std::uint32_t>(presets), 4);
    WriteString(name);
    return countPlace;
}

void CPresetFileWriter::WritePreset(std::int32_t type, const std::wstring& name,
                                    std::span<const std::byte> data) {
    if (data.size() > std::numeric_limits<std::int32_t>::max()) throw StreamError();
    WriteNumber(static_cast<std::uint32_t>(type), 4);
    WriteString(name);
    WriteNumber(static_cast<std::uint32_t>(data.size()), 4);
    m_sink.Write(data);
}

void CPresetFileWriter::PatchCount(std::uint64_t place, std::int32_t count) {
    const std::uint64_t end = Position();
    Seek(place);
    WriteNumber(static_cast<std::uint32_t>(count), 4);
    Seek(end);
}
