#include "PluginTable.h"

#include <algorithm>
#include <array>
#include <vector>

#include "CategoryTokens.h"

namespace {

enum class FieldKind { Text, TextOrNull, Number, Flag };

struct Field {
    std::wstring_view name;
    FieldKind kind;
};

constexpr std::array<Field, 11> kFields = {{
    {L"category", FieldKind::Text},
    {L"name", FieldKind::Text},
    {L"vendor", FieldKind::Text},
    {L"clsid", FieldKind::Text},
    {L"md5", FieldKind::TextOrNull},
    {L"vstId", FieldKind::Number},
    {L"file", FieldKind::Text},
    {L"excluded", FieldKind::Flag},
    {L"permanent", FieldKind::Flag},
    {L"missing", FieldKind::Flag},
    {L"duplicateOf", FieldKind::TextOrNull},
}};
using Cells = std::array<std::wstring, kFields.size()>;

/// In the order of kFields.
Cells CellsOf(const PluginTableRow& row) {
    const auto flag = [](bool value) { return std::wstring(value ? L"true" : L"false"); };
    return {std::wstring(TokenOf(row.category)),
            row.name,
            row.vendor,
            row.clsid,
            row.md5,
            row.vstId ? std::to_wstring(*row.vstId) : std::wstring(),
            row.file,
            flag(row.excluded),
            flag(row.permanent),
            flag(row.missing),
            row.duplicateOf};
}

/// On one line: a name from the registry may hold anything.
std::wstring Printable(std::wstring text) {
    std::ranges::replace_if(
        text, [](wchar_t c) { return c < L' ' || c == 0x7F; }, L' ');
    return text;
}

/// The beginning of the text that has room in so many places.
std::wstring_view CutTo(std::wstring_view text, std::size_t width) {
    std::size_t length = 0;
    for (std::size_t used = 0; length < text.size(); ++length) {
        used += ConsoleWidthOf(text.substr(length, 1));
        if (used > width) break;
    }
    return text.substr(0, length);
}

std::wstring CsvField(const std::wstring& text) {
    if (text.find_first_of(L",\"\r\n") == std::wstring::npos) return text;
    std::wstring quoted = L"\"";
    for (const wchar_t c : text) quoted.append(c == L'"' ? 2 : 1, c);
    return quoted + L'"';
}

std::wstring JsonText(const std::wstring& text) {
    static constexpr std::wstring_view kDigits = L"0123456789abcdef";
    std::wstring quoted = L"\"";
    for (const wchar_t c : text) {
        if (c == L'"' || c == L'\\') {
            (quoted += L'\\') += c;
        } else if (c < L' ') {
            ((quoted += L"\\u00") += kDigits[static_cast<std::size_t>(c) >> 4]) +=
                kDigits[static_cast<std::size_t>(c) & 0xF];
        } else {
            quoted += c;
        }
    }
    return quoted + L'"';
}

std::wstring JsonValue(FieldKind kind, const std::wstring& cell) {
    if (cell.empty() && kind != FieldKind::Text) return L"null";
    return kind == FieldKind::Text || kind == FieldKind::TextOrNull ? JsonText(cell) : cell;
}

}  // namespace

std::size_t ConsoleWidthOf(std::wstring_view text) {
    struct Range {
        unsigned first;
        unsigned last;
    };
    // Of Unicode's EastAsianWidth.txt the blocks that are wide throughout.
    static constexpr Range kWide[] = {{0x1100, 0x115F}, {0x2E80, 0x303E}, {0x3041, 0xA4CF},
                                      {0xA960, 0xA97F}, {0xAC00, 0xD7A3}, {0xF900, 0xFAFF},
                                      {0xFE30, 0xFE6F}, {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}};
    std::size_t width = 0;
    for (const wchar_t c : text) {
        const auto code = static_cast<unsigned>(c);
        const bool wide = std::ranges::any_of(
            kWide, [code](const Range& range) { return code >= range.first && code <= range.last; });
        width += wide ? 2 : 1;  // a surrogate pair is two of one place: what lies up there is wide
    }
    return width;
}

std::wstring TableOf(std::span<const PluginTableRow> rows, std::optional<std::size_t> width) {
    constexpr std::size_t kGap = 2;
    std::vector<Cells> lines(1);
    for (std::size_t i = 0; i < kFields.size(); ++i) lines[0][i] = kFields[i].name;
    for (const PluginTableRow& row : rows) {
        lines.push_back(CellsOf(row));
        std::ranges::transform(lines.back(), lines.back().begin(), Printable);
    }
    std::array<std::size_t, kFields.size()> widths{};
    for (const Cells& line : lines) {
        for (std::size_t i = 0; i < line.size(); ++i)
            widths[i] = std::max(widths[i], ConsoleWidthOf(line[i]));
    }
    std::wstring table;
    for (const Cells& cells : lines) {
        std::wstring line;
        for (std::size_t i = 0; i < cells.size(); ++i)
            line.append(cells[i]).append(widths[i] - ConsoleWidthOf(cells[i]) + kGap, L' ');
        line.erase(line.find_last_not_of(L' ') + 1);
        table.append(width ? CutTo(line, *width) : line).append(L"\n");
    }
    return table;
}

std::wstring CsvOf(std::span<const PluginTableRow> rows) {
    std::wstring csv;
    const auto add = [&csv](std::size_t place, const std::wstring& cell) {
        csv.append(place == 0 ? L"" : L",").append(CsvField(cell));
        if (place + 1 == kFields.size()) csv += L'\n';
    };
    for (std::size_t i = 0; i < kFields.size(); ++i) add(i, std::wstring(kFields[i].name));
    for (const PluginTableRow& row : rows) {
        const Cells cells = CellsOf(row);
        for (std::size_t i = 0; i < cells.size(); ++i) add(i, cells[i]);
    }
    return csv;
}

std::wstring JsonOf(std::span<const PluginTableRow> rows) {
    std::wstring json = L"[";
    for (const PluginTableRow& row : rows) {
        json += json.size() == 1 ? L"\n" : L",\n";
        const Cells cells = CellsOf(row);
        for (std::size_t i = 0; i < cells.size(); ++i) {
            json.append(i == 0 ? L"  {" : L", ").append(JsonText(std::wstring(kFields[i].name)));
            json.append(L": ").append(JsonValue(kFields[i].kind, cells[i]));
        }
        json += L'}';
    }
    return json += rows.empty() ? L"]\n" : L"\n]\n";
}
