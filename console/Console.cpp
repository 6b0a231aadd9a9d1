#include "Console.h"

#include <algorithm>
#include <array>

#include "Files.h"
#include "TextBytes.h"

namespace {

/// A console takes this many characters at once.
constexpr std::size_t kConsolePiece = 8192;
constexpr std::size_t kLongestInput = 64U << 20;

bool IsConsole(HANDLE stream) {
    DWORD mode = 0;
    return ::GetConsoleMode(stream, &mode) != FALSE;
}

std::wstring WithLineEnds(std::wstring_view text) {
    std::wstring lines;
    lines.reserve(text.size() + text.size() / 64);
    for (const wchar_t c : text) {
        if (c == L'\n') lines += L'\r';
        lines += c;
    }
    return lines;
}

DWORD WriteToConsole(HANDLE stream, std::wstring_view text) {
    while (!text.empty()) {
        DWORD written = 0;
        const auto piece = static_cast<DWORD>(std::min(text.size(), kConsolePiece));
        if (!::WriteConsoleW(stream, text.data(), piece, &written, nullptr) || written == 0)
            return ::GetLastError();
        text.remove_prefix(written);
    }
    return ERROR_SUCCESS;
}

DWORD WriteTo(DWORD which, std::wstring_view text) {
    const HANDLE stream = ::GetStdHandle(which);
    const std::wstring lines = WithLineEnds(text);
    if (IsConsole(stream)) return WriteToConsole(stream, lines);
    const std::string bytes = Utf8Of(lines);
    if (WriteAll(stream, std::as_bytes(std::span(bytes)))) return ERROR_SUCCESS;
    const DWORD error = ::GetLastError();
    return error == ERROR_SUCCESS ? ERROR_WRITE_FAULT : error;
}

}  // namespace

DWORD CConsole::Write(std::wstring_view data) { return WriteTo(STD_OUTPUT_HANDLE, data); }

void CConsole::Say(const std::wstring& message) { WriteTo(STD_ERROR_HANDLE, message + L'\n'); }

std::optional<std::size_t> CConsole::Width() {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (!::GetConsoleScreenBufferInfo(::GetStdHandle(STD_OUTPUT_HANDLE), &info)) return std::nullopt;
    // In the last place the console would begin a new line by itself.
    return static_cast<std::size_t>(std::max(info.srWindow.Right - info.srWindow.Left, 1));
}

std::optional<std::string> CConsole::ReadInput() {
    const HANDLE stream = ::GetStdHandle(STD_INPUT_HANDLE);
    std::string input;
    std::array<char, 16384> piece{};
    for (DWORD got = 0; ::ReadFile(stream, piece.data(), DWORD{piece.size()}, &got, nullptr); got = 0) {
        if (got == 0) return input;
        input.append(piece.data(), got);
        if (input.size() > kLongestInput) return std::nullopt;
    }
    // A pipe ends so.
    return ::GetLastError() == ERROR_BROKEN_PIPE ? std::optional(input) : std::nullopt;
}
