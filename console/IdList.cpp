#include "IdList.h"

#include <algorithm>

namespace {

constexpr std::wstring_view kBlanks = L" \t\r\n";

std::wstring_view Trimmed(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::wstring_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<std::uint32_t> HexNumber(std::wstring_view digits) {
    std::uint32_t value = 0;
    for (const wchar_t c : digits) {
        static constexpr std::wstring_view kDigits = L"0123456789abcdefABCDEF";
        const std::size_t digit = kDigits.find(c);
        if (digit == std::wstring_view::npos) return std::nullopt;
        value = value * 16 + static_cast<std::uint32_t>(digit < 16 ? digit : digit - 6);
    }
    return value;
}

/// Takes the lines, or the records of CSV, in which a quoted field may go over several lines.
class CRecords {
  public:
    explicit CRecords(std::wstring_view text) : m_text(text) {}

    /// False at the end.
    bool Next() {
        if (m_text.empty()) return false;
        m_number += m_lines;
        const std::size_t end = std::min(m_text.find(L'\n'), m_text.size() - 1) + 1;
        m_line = m_text.substr(0, end);
        m_lines = 1;
        m_rest = m_text;
        m_text.remove_prefix(end);
        return true;
    }
    std::size_t Number() const { return m_number; }
    std::wstring_view Line() const { return Trimmed(m_line); }

    /// The record that begins with this line, which may take further ones.
    std::vector<std::wstring> Fields() {
        std::vector<std::wstring> fields(1);
        bool quoted = false;
        std::size_t i = 0;
        for (; i < m_rest.size() && (quoted || m_rest[i] != L'\n'); ++i) {
            const wchar_t c = m_rest[i];
            if (c == L'"' && quoted && i + 1 < m_rest.size() && m_rest[i + 1] == L'"') {
                fields.back() += m_rest[++i];
            } else if (c == L'"') {
                quoted = !quoted;
            } else if (c == L',' && !quoted) {
                fields.emplace_back();
            } else {
                fields.back() += c;
            }
        }
        m_lines = static_cast<std::size_t>(std::ranges::count(m_rest.substr(0, i), L'\n')) + 1;
        m_text = m_rest.substr(std::min(i + 1, m_rest.size()));
        return fields;
    }

  private:
    std::wstring_view m_text;  // behind the line
    std::wstring_view m_rest;  // from the line on
    std::wstring_view m_line;
    std::size_t m_lines = 1;
    std::size_t m_number = 0;
};

}  // namespace

std::optional<Guid> ParseIdText(std::wstring_view text) {
    text = Trimmed(text);
    if (text.starts_with(L'{') && text.ends_with(L'}') && text.size() > 2)
        text = text.substr(1, text.size() - 2);
    if (text.size() != 36 || text[8] != L'-' || text[13] != L'-' || text[18] != L'-' || text[23] != L'-')
        return std::nullopt;
    Guid guid;
    const auto data1 = HexNumber(text.substr(0, 8));
    const auto data2 = HexNumber(text.substr(9, 4));
    const auto data3 = HexNumber(text.substr(14, 4));
    if (!data1 || !data2 || !data3) return std::nullopt;
    guid.data1 = *data1;
    guid.data2 = static_cast<std::uint16_t>(*data2);
    guid.data3 = static_cast<std::uint16_t>(*data3);
    constexpr std::array<std::size_t, 8> kPlaces = {19, 21, 24, 26, 28, 30, 32, 34};
    for (std::size_t i = 0; i < kPlaces.size(); ++i) {
        const auto byte = HexNumber(text.substr(kPlaces[i], 2));
        if (!byte) return std::nullopt;
        guid.data4[i] = static_cast<std::uint8_t>(*byte);
    }
    return guid;
}

std::variant<std::vector<Guid>, BadIdLine> ReadIdList(std::wstring_view text) {
    std::vector<Guid> ids;
    std::optional<std::size_t> column;  // of the ids, where there is a heading
    CRecords records(text);
    for (bool first = true; records.Next();) {
        const std::wstring_view line = records.Line();
        if (line.empty() || (!column && line.starts_with(L'#'))) continue;
        std::optional<Guid> id = ParseIdText(line);
        if (column || (first && !id)) {
            const std::vector<std::wstring> fields = records.Fields();
            const auto isHeading = [](const std::wstring& field) { return Trimmed(field) == L"clsid"; };
            if (column) {
                id = *column < fields.size() ? ParseIdText(fields[*column]) : std::nullopt;
            } else if (const auto found = std::ranges::find_if(fields, isHeading); found != fields.end()) {
                column = static_cast<std::size_t>(found - fields.begin());
                first = false;
                continue;
            }
        }
        first = false;
        if (!id) return BadIdLine{records.Number(), std::wstring(line)};
        ids.push_back(*id);
    }
    return ids;
}
