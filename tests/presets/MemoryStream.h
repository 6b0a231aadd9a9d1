// A preset file in memory, and the plain text conversions of a code page like Western Europe's.
#pragma once

#include <algorithm>
#include <vector>

#include "PresetFile.h"

namespace support {

using Bytes = std::vector<std::byte>;

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

class MemorySink : public IByteSink {
  public:
    void Write(std::span<const std::byte> bytes) override {
        m_bytes.resize(std::max(m_bytes.size(), m_position + bytes.size()));
        std::ranges::copy(bytes, m_bytes.begin() + static_cast<std::ptrdiff_t>(m_position));
        m_position += bytes.size();
    }
    void Seek(std::uint64_t position) override { m_position = static_cast<std::size_t>(position); }
    std::uint64_t Position() const override { return m_position; }
    void Flush() override {}

    Bytes m_bytes;

  private:
    std::size_t m_position = 0;
};

inline TextConversion Latin1() {
    return {.toAnsi =
                [](std::wstring_view text) {
                    std::string bytes;
                    for (const wchar_t c : text) bytes += c < 0x100 ? static_cast<char>(c) : '?';
                    return bytes;
                },
            .fromAnsi =
                [](std::string_view bytes) {
                    std::wstring text;
                    for (const char c : bytes) text += static_cast<wchar_t>(static_cast<unsigned char>(c));
                    return text;
                }};
}

}  // namespace support
