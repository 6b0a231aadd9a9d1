// Files as byte streams, buffered, for the preset codec.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ByteStream.h"
#include "Files.h"

/// An existing file, opened for reading. Once the system has failed to read from it, it reads no more: of
/// what a walk has missed, the next one must not come to know.
class CFileSource : public IByteSource {
  public:
    /// Nothing when it can't be opened; a folder can't.
    static std::optional<CFileSource> Open(const std::wstring& path);

    void Read(std::span<std::byte> bytes) override;
    void Seek(std::uint64_t position) override;
    std::uint64_t Position() const override { return m_position; }
    std::uint64_t Size() const override { return m_size; }

  private:
    CFileSource(UniqueFile file, std::uint64_t size) : m_file(std::move(file)), m_size(size) {}
    void ReadFrom(std::uint64_t place, std::span<std::byte> bytes);

    UniqueFile m_file;
    std::uint64_t m_size;
    std::uint64_t m_position = 0;
    std::uint64_t m_bufferStart = 0;
    bool m_failed = false;
    std::vector<std::byte> m_buffer;
};

/// A file that is created or truncated. What was written is on the disk after Flush only.
class CFileSink : public IByteSink {
  public:
    static std::optional<CFileSink> Create(const std::wstring& path);

    void Write(std::span<const std::byte> bytes) override;
    void Seek(std::uint64_t position) override;
    std::uint64_t Position() const override { return m_position + m_buffer.size(); }
    void Flush() override;

  private:
    explicit CFileSink(UniqueFile file) : m_file(std::move(file)) {}
    void WriteOut(std::span<const std::byte> bytes);
    void EmptyBuffer();

    UniqueFile m_file;
    std::uint64_t m_position = 0;  // where the buffer goes
    std::vector<std::byte> m_buffer;
};
