#include "RegFileText.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr std::wstring_view kHeader = L"\xFEFFWindows Registry Editor Version 5.00\r\n";
constexpr std::wstring_view kLineEnd = L"\r\n";
constexpr std::wstring_view kNotInLines(L"\r\n\0", 3);
constexpr std::wstring_view kGoesOn = L"\\\r\n  ";
constexpr std::wstring_view kDigits = L"0123456789abcdef";
constexpr std::size_t kIndent = 2;
/// Behind this column no further byte begins.
constexpr std::size_t kLastColumn = 76;

// The types with a form of their own.
constexpr std::uint32_t kText = 1;
constexpr std::uint32_t kBinary = 3;
constexpr std::uint32_t kNumber = 4;
constexpr std::size_t kNumberBytes = 4;

wchar_t CharacterAt(std::span<const std::byte> data, std::size_t index) {
    const auto low = std::to_integer<unsigned>(data[2 * index]);
    const auto high = std::to_integer<unsigned>(data[2 * index + 1]);
    return static_cast<wchar_t>(low | (high << 8U));
}

/// The text, when quotes can hold it: one zero at its end and nothing in it that ends a line.
std::optional<std::wstring> QuotableText(std::span<const std::byte> data) {
    const std::size_t length = data.size() / 2;
    if (data.size() % 2 != 0 || length == 0 || CharacterAt(data, length - 1) != L'\0') return std::nullopt;
    std::wstring text;
    for (std::size_t i = 0; i + 1 < length; ++i) text += CharacterAt(data, i);
    return IsRegFileName(text) ? std::optional(text) : std::nullopt;
}

std::vector<std::byte> BytesOfText(std::wstring_view text) {
    std::vector<std::byte> bytes;
    bytes.reserve(2 * text.size() + 2);
    for (const wchar_t c : text) {
        bytes.push_back(static_cast<std::byte>(c & 0xFF));
        bytes.push_back(static_cast<std::byte>((c >> 8) & 0xFF));
    }
    bytes.resize(bytes.size() + 2);
    return bytes;
}

void AppendQuoted(std::wstring& text, std::wstring_view content) {
    text += L'"';
    for (const wchar_t c : content) {
        if (c == L'"' || c == L'\\') text += L'\\';
        text += c;
    }
    text += L'"';
}

void AppendHex(std::wstring& text, std::uint32_t number, int digits) {
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) text += kDigits[(number >> shift) & 0xF];
}

/// Without leading zeros, as the editor writes types.
void AppendType(std::wstring& text, std::uint32_t type) {
    int digits = 1;
    while (digits < 8 && (type >> (4 * digits)) != 0) ++digits;
    AppendHex(text, type, digits);
}

constexpr std::size_t kByteLength = 3;
/// Each byte's digits with the comma behind them, and one character more: four are copied at once.
constexpr auto kByteTexts = [] {
    std::array<std::array<wchar_t, kByteLength + 1>, 256> texts{};
    for (std::size_t byte = 0; byte < texts.size(); ++byte)
        texts[byte] = {kDigits[byte / 16], kDigits[byte % 16], L','};
    return texts;
}();

std::uint32_t Drain(std::wstring& text, const RegTextSink& sink) {
    if (!sink || text.size() < kRegTextAtOnce) return 0;
    const std::uint32_t error = sink(text);
    text.clear();
    return error;
}

/// Straight into the text, many lines at a time: character by character it would take longer than the writing
/// to the disk.
std::uint32_t AppendBytes(std::wstring& text, std::size_t lineStart, std::span<const std::byte> data,
                          const RegTextSink& sink) {
    constexpr std::size_t kLongestLine = kLastColumn + kByteLength + kGoesOn.size();
    std::size_t column = text.size() - lineStart;
    std::size_t used = text.size();
    while (!data.empty()) {
        const std::size_t room = std::min(kRegTextAtOnce, data.size() * (kByteLength + 1));
        // Smaller from the second time on, because what grows is filled with zeros first.
        text.resize(used + room + kLongestLine);
        wchar_t* end = text.data() + used;
        const wchar_t* const full = end + room;
        while (!data.empty() && end < full) {
            const std::size_t fits = column > kLastColumn ? 1 : (kLastColumn - column) / kByteLength + 1;
            const auto part = data.first(std::min(fits, data.size()));
            data = data.subspan(part.size());
            for (const std::byte byte : part) {
                const auto& digits = kByteTexts[std::to_integer<std::size_t>(byte)];
                std::memcpy(end, digits.data(), sizeof digits);
                end += kByteLength;
            }
            std::memcpy(end, kGoesOn.data(), kGoesOn.size() * sizeof(wchar_t));
            // The last byte has no comma.
            end = data.empty() ? end - 1 : end + kGoesOn.size();
            column = kIndent;
        }
        used = static_cast<std::size_t>(end - text.data());
        if (!sink || used < kRegTextAtOnce) continue;
        if (const std::uint32_t error = sink(std::wstring_view(text).substr(0, used))) return error;
        used = 0;
    }
    text.resize(used);
    return 0;
}

void AppendValueName(std::wstring& text, std::wstring_view name) {
    if (name.empty()) {
        text += L'@';
    } else {
        AppendQuoted(text, name);
    }
    text += L'=';
}

/// Takes the lines apart without much care: the caller compares what was understood with the text.
class CRegFileReader {
  public:
    explicit CRegFileReader(std::wstring_view text) : m_rest(text) {}

    std::optional<std::vector<RegFileKey>> Read() {
        std::vector<RegFileKey> keys;
        if (!Skip(kHeader)) return std::nullopt;
        while (!m_rest.empty()) {
            const bool read = Skip(L"\r\n[") ? ReadKey(keys) : !keys.empty() && ReadValue(keys.back());
            if (!read) return std::nullopt;
        }
        return keys;
    }

  private:
    bool Skip(std::wstring_view expected) {
        if (!m_rest.starts_with(expected)) return false;
        m_rest.remove_prefix(expected.size());
        return true;
    }

    /// What stands before the mark; the mark goes, too.
    std::optional<std::wstring_view> UpTo(std::wstring_view mark) {
        const std::size_t end = m_rest.find(mark);
        if (end == std::wstring_view::npos) return std::nullopt;
        const std::wstring_view before = m_rest.substr(0, end);
        m_rest.remove_prefix(end + mark.size());
        return before;
    }

    bool ReadKey(std::vector<RegFileKey>& keys) {
        RegFileKey key;
        key.removed = Skip(L"-");
        const auto path = UpTo(L"]\r\n");
        if (path) key.path = *path;
        keys.push_back(std::move(key));
        return path.has_value();
    }

    bool ReadValue(RegFileKey& key) {
        RegFileValue value;
        if (!Skip(L"@")) {
            auto name = ReadQuoted();
            if (!name) return false;
            value.name = std::move(*name);
        }
        const bool read = Skip(L"=") && ReadData(value) && Skip(kLineEnd);
        key.values.push_back(std::move(value));
        return read;
    }

    bool ReadData(RegFileValue& value) {
        if (Skip(L"-")) {
            value.removed = true;
            return true;
        }
        if (m_rest.starts_with(L'"')) {
            const auto text = ReadQuoted();
            value.type = kText;
            if (text) value.data = BytesOfText(*text);
            return text.has_value();
        }
        if (Skip(L"dword:")) {
            const std::uint32_t number = ReadHex(8);
            value.type = kNumber;
            for (std::size_t i = 0; i < kNumberBytes; ++i)
                value.data.push_back(static_cast<std::byte>((number >> (8 * i)) & 0xFF));
            return true;
        }
        value.type = kBinary;
        if (Skip(L"hex(")) {
            value.type = ReadHex(8);
            if (!Skip(L")")) return false;
        } else if (!Skip(L"hex")) {
            return false;
        }
        return Skip(L":") && ReadBytes(value.data);
    }

    std::optional<std::wstring> ReadQuoted() {
        if (!Skip(L"\"")) return std::nullopt;
        std::wstring text;
        while (!m_rest.empty()) {
            wchar_t c = Take();
            if (c == L'"') return text;
            if (c == L'\\' && !m_rest.empty()) c = Take();
            text += c;
        }
        return std::nullopt;
    }

    wchar_t Take() {
        const wchar_t c = m_rest.front();
        m_rest.remove_prefix(1);
        return c;
    }

    bool AtDigit() const {
        return !m_rest.empty() && kDigits.find(m_rest.front()) != std::wstring_view::npos;
    }

    std::uint32_t ReadHex(int mostDigits) {
        std::uint32_t number = 0;
        for (int i = 0; i < mostDigits && AtDigit(); ++i)
            number = number * 16 + static_cast<std::uint32_t>(kDigits.find(Take()));
        return number;
    }

    bool ReadBytes(std::vector<std::byte>& data) {
        while (AtDigit()) {
            data.push_back(static_cast<std::byte>(ReadHex(2)));
            if (!Skip(L",")) break;
            Skip(kGoesOn);
        }
        return true;
    }

    std::wstring_view m_rest;
};

}  // namespace

std::wstring_view RegFileHeader() { return kHeader; }

bool IsRegFileName(std::wstring_view name) {
    return name.find_first_of(kNotInLines) == std::wstring_view::npos;
}

void AppendRegKey(std::wstring& text, std::wstring_view path, bool removed) {
    text += kLineEnd;
    text += removed ? L"[-" : L"[";
    text += path;
    text += L']';
    text += kLineEnd;
}

std::uint32_t AppendRegValue(std::wstring& text, std::wstring_view name, std::uint32_t type,
                             std::span<const std::byte> data, const RegTextSink& sink) {
    const std::size_t lineStart = text.size();
    AppendValueName(text, name);
    const auto quotable = type == kText ? QuotableText(data) : std::nullopt;
    if (quotable) {
        AppendQuoted(text, *quotable);
    } else if (type == kNumber && data.size() == kNumberBytes) {
        text += L"dword:";
        for (std::size_t i = kNumberBytes; i > 0; --i)
            AppendHex(text, std::to_integer<std::uint32_t>(data[i - 1]), 2);
    } else {
        text += L"hex";
        if (type != kBinary) {
            text += L'(';
            AppendType(text, type);
            text += L')';
        }
        text += L':';
        if (const std::uint32_t error = AppendBytes(text, lineStart, data, sink)) return error;
    }
    text += kLineEnd;
    return Drain(text, sink);
}

void AppendRemovedRegValue(std::wstring& text, std::wstring_view name) {
    AppendValueName(text, name);
    text += L'-';
    text += kLineEnd;
}

void AppendRegKey(std::wstring& text, const RegFileKey& key) {
    AppendRegKey(text, key.path, key.removed);
    for (const RegFileValue& value : key.values) {
        if (value.removed) {
            AppendRemovedRegValue(text, value.name);
        } else {
            AppendRegValue(text, value.name, value.type, value.data);
        }
    }
}

std::optional<std::vector<RegFileKey>> ParseRegFile(std::wstring_view text) {
    auto keys = CRegFileReader(text).Read();
    if (!keys) return std::nullopt;
    std::wstring again(kHeader);
    again.reserve(text.size());
    for (const RegFileKey& key : *keys) {
        const bool named =
            IsRegFileName(key.path) && std::ranges::all_of(key.values, &IsRegFileName, &RegFileValue::name);
        if (!named) return std::nullopt;
        AppendRegKey(again, key);
    }
    return again == text ? std::move(keys) : std::nullopt;
}
