// A file as the preset codec sees it: bytes with a position.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// Thrown by a stream that can't do what it was asked, and by the reader for a length or a count that the
/// file does not hold. It stays within this room: each operation on a preset file turns it into a result
/// code.
struct StreamError {};

class IByteSource {
  public:
    virtual ~IByteSource() = default;
    /// Fills all of `bytes`, or throws.
    virtual void Read(std::span<std::byte> bytes) = 0;
    /// Within the file; costs nothing until the next read.
    virtual void Seek(std::uint64_t position) = 0;
    virtual std::uint64_t Position() const = 0;
    virtual std::uint64_t Size() const = 0;
};

class IByteSink {
  public:
    virtual ~IByteSink() = default;
    virtual void Write(std::span<const std::byte> bytes) = 0;
    virtual void Seek(std::uint64_t position) = 0;
    virtual std::uint64_t Position() const = 0;
    virtual void Flush() = 0;
};
