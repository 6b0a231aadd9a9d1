// The preset file format: a flat little-endian stream of header, plug-in records and preset records.
// docs/preset-file-format.md describes it.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ByteStream.h"
#include "Guid.h"

/// Kinds of presets, as the registry's own value types.
inline constexpr std::int32_t kPresetInFile = 1;      // REG_SZ
inline constexpr std::int32_t kPresetInRegistry = 3;  // REG_BINARY

/// To and from the user's code page, without terminators. Bytes that are no text there become some other
/// text; neither direction fails.
struct TextConversion {
    std::function<std::string(std::wstring_view)> toAnsi;
    std::function<std::wstring(std::string_view)> fromAnsi;
};

struct PresetFileHeader {
    std::uint16_t version = 0;
    std::int32_t plugins = 1;
};

struct PluginRecordHead {
    Guid clsid;
    std::optional<Guid> category;  // version 0 has none
    std::int32_t presets = 0;
    std::wstring name;
};

struct PresetRecordHead {
    std::int32_t type = 0;
    std::wstring name;
    std::uint32_t length = 0;  // the file has at least as many bytes left
};

/// Whatever it reads throws StreamError when the file ends too early or names an impossible length; nothing
/// is allocated for a length before the file is known to be as long.
class CPresetFileReader {
  public:
    CPresetFileReader(IByteSource& source, const TextConversion& text) : m_source(source), m_text(text) {}

    /// Nothing when the file does not begin as a preset file does, or ends within its header.
    std::optional<PresetFileHeader> ReadHeader();
    PluginRecordHead ReadPlugin(std::uint16_t version);
    /// The preset's data follow; either of the next two has to be called.
    PresetRecordHead ReadPreset();
    void ReadData(const PresetRecordHead& preset, std::vector<std::byte>& data);
    void SkipData(const PresetRecordHead& preset) { Skip(preset.length); }

    std::uint64_t Position() const { return m_source.Position(); }
    void Seek(std::uint64_t position) { m_source.Seek(position); }

  private:
    std::uint64_t Left() const { return m_source.Size() - m_source.Position(); }
    void Skip(std::uint64_t bytes) { m_source.Seek(m_source.Position() + bytes); }
    std::uint32_t ReadNumber(int bytes);
    std::uint16_t Read16() { return static_cast<std::uint16_t>(ReadNumber(2)); }
    std::int32_t Read32() { return static_cast<std::int32_t>(ReadNumber(4)); }
    Guid ReadGuid();
    std::uint32_t ReadLength();
    std::wstring ReadString();
    std::wstring ReadAnsi(std::uint32_t bytes);
    std::wstring ReadUtf16(std::uint32_t characters);

    IByteSource& m_source;
    const TextConversion& m_text;
};

/// Writes version 1. Throws StreamError when the file can't be written, or data are too long for the format.
class CPresetFileWriter {
  public:
    CPresetFileWriter(IByteSink& sink, const TextConversion& text) : m_sink(sink), m_text(text) {}

    void WriteHeader(std::int32_t plugins);
    /// Gives the place of the preset count, for PatchCount.
    std::uint64_t WritePlugin(const Guid& clsid, const Guid& category, std::int32_t presets,
                              const std::wstring& name);
    void WritePreset(std::int32_t type, const std::wstring& name, std::span<const std::byte> data);

    std::uint64_t Position() const { return m_sink.Position(); }
    void Seek(std::uint64_t position) { m_sink.Seek(position); }
    /// Writes a count over the one at `place` and goes on where it was.
    void PatchCount(std::uint64_t place, std::int32_t count);

  private:
    void WriteNumber(std::uint32_t value, int bytes);
    void WriteGuid(const Guid& guid);
    void WriteString(std::wstring_view text);

    IByteSink& m_sink;
    const TextConversion& m_text;
};
