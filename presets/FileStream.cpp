#include "FileStream.h"

#include <algorithm>

namespace {

constexpr std::size_t kBuffer = 0x10000;

bool MoveTo(HANDLE file, std::uint64_t position) {
    LARGE_INTEGER place{};
    place.QuadPart = static_cast<LONGLONG>(position);
    return ::SetFilePointerEx(file, place, nullptr, FILE_BEGIN) != FALSE;
}

}  // namespace

std::optional<CFileSource> CFileSource::Open(const std::wstring& path) {
    CPatience patience;
    UniqueFile file = OpenForReading(path, patience);
    const auto size = SizeOf(file);
    if (!size) return std::nullopt;
    return CFileSource(std::move(file), *size);
}

void CFileSource::ReadFrom(std::uint64_t place, std::span<std::byte> bytes) {
    m_failed = m_failed || !MoveTo(m_file.Get(), place) || !ReadAll(m_file.Get(), bytes);
    if (m_failed) throw StreamError();
}

void CFileSource::Read(std::span<std::byte> bytes) {
    if (bytes.size() > m_size - m_position) throw StreamError();
    while (!bytes.empty()) {
        const std::uint64_t bufferEnd = m_bufferStart + m_buffer.size();
        if (m_position >= m_bufferStart && m_position < bufferEnd) {
            const auto offset = static_cast<std::size_t>(m_position - m_bufferStart);
            const std::size_t count = std::min(bytes.size(), m_buffer.size() - offset);
            std::copy_n(m_buffer.begin() + static_cast<std::ptrdiff_t>(offset), count, bytes.begin());
            bytes = bytes.subspan(count);
            m_position += count;
        } else if (bytes.size() >= kBuffer) {
            ReadFrom(m_position, bytes);
            m_position += bytes.size();
            return;
        } else {
            m_bufferStart = m_position;
            m_buffer.resize(static_cast<std::size_t>(std::min<std::uint64_t>(kBuffer, m_size - m_position)));
            ReadFrom(m_bufferStart, m_buffer);
        }
    }
}

void CFileSource::Seek(std::uint64_t position) {
    if (position > m_size) throw StreamError();
    m_position = position;
}

std::optional<CFileSink> CFileSink::Create(const std::wstring& path) {
    UniqueFile file = OpenForWriting(path);
    if (!file) return std::nullopt;
    return CFileSink(std::move(file));
}

void CFileSink::WriteOut(std::span<const std::byte> bytes) {
    if (!WriteAll(m_file.Get(), bytes)) throw StreamError();
    m_position += bytes.size();
}

void CFileSink::Write(std::span<const std::byte> bytes) {
    if (m_buffer.size() + bytes.size() > kBuffer) EmptyBuffer();
    if (bytes.size() > kBuffer) return WriteOut(bytes);
    m_buffer.insert(m_buffer.end(), bytes.begin(), bytes.end());
}

void CFileSink::EmptyBuffer() {
    WriteOut(m_buffer);
    m_buffer.clear();
}

void CFileSink::Flush() {
    EmptyBuffer();
    if (!::FlushFileBuffers(m_file.Get())) throw StreamError();
}

void CFileSink::Seek(std::uint64_t position) {
    EmptyBuffer();
    if (!MoveTo(m_file.Get(), position)) throw StreamError();
    m_position = position;
}
