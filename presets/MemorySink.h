// A preset file, or a part of one, that is kept in memory.
#pragma once

#include <string>

#include "ByteStream.h"

class CMemorySink : public IByteSink {
  public:
    void Write(std::span<const std::byte> bytes) override {
        const auto* first = reinterpret_cast<const char*>(bytes.data());
        m_bytes.replace(m_position, bytes.size(), first, bytes.size());
        m_position += bytes.size();
    }
    void Seek(std::uint64_t position) override { m_position = static_cast<std::size_t>(position); }
    std::uint64_t Position() const override { return m_position; }
    void Flush() override {}

    const std::string& Bytes() const { return m_bytes; }

  private:
    std::string m_bytes;
    std::size_t m_position = 0;
};
