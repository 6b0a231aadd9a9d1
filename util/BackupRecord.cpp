#include "BackupRecord.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <utility>

#include "XmlDoc.h"
#include "XmlText.h"

namespace {

constexpr wchar_t kRoot[] = L"Backup";
constexpr wchar_t kFormat[] = L"1";

constexpr std::array<BackupKind, 4> kKinds = {BackupKind::Registry, BackupKind::Presets, BackupKind::Layouts,
                                              BackupKind::Studio};

void Add(std::wstring& text, const wchar_t* element,
         std::initializer_list<std::pair<const wchar_t*, std::wstring_view>> attributes) {
    text += std::wstring(L"\r\n<") + element;
    for (const auto& [name, value] : attributes) AppendXmlAttribute(text, name, value);
    text += L"/>";
}

/// A document object would take many calls for each file, and some parsers keep a part of it for good.
std::wstring TextOf(const BackupRecord& record) {
    std::wstring text = std::wstring(L"<") + kRoot;
    AppendXmlAttribute(text, L"Format", kFormat);
    AppendXmlAttribute(text, L"Kind", BackupKindWord(record.kind));
    AppendXmlAttribute(text, L"Step", record.step);
    AppendXmlAttribute(text, L"Time", record.time);
    AppendXmlAttribute(text, L"Version", record.version);
    text += L'>';
    for (const std::wstring& key : record.keys) Add(text, L"Key", {{L"Path", key}});
    for (const auto& [path, copy] : record.files) Add(text, L"File", {{L"Path", path}, {L"Copy", copy}});
    if (!record.layout.empty()) Add(text, L"Layout", {{L"Copy", record.layout}});
    return text + L"\r\n</" + kRoot + L'>';
}

/// One that is written with something replaced would lead to another key or file.
bool CanBeWritten(const BackupRecord& record) {
    return IsXmlText(record.step) && std::ranges::all_of(record.keys, &IsXmlText) &&
           std::ranges::all_of(record.files, &IsXmlText, &BackupRecord::File::path);
}

class CRecordReader : public CXmlDoc {
  public:
    std::optional<BackupRecord> Read(const std::wstring& path) {
        if (!Load(path, true) || Name() != kRoot || Attribute(L"Format") != kFormat) return std::nullopt;
        BackupRecord record;
        const auto kind = std::ranges::find(kKinds, Attribute(L"Kind"), &BackupKindWord);
        if (kind == kKinds.end()) return std::nullopt;
        record.kind = *kind;
        record.step = Attribute(L"Step");
        record.time = Attribute(L"Time");
        record.version = Attribute(L"Version");
        for (ToFirstChild(); HasNode(); ToNextSibling()) {
            ParseNode(Current());
            if (!ReadPart(record)) return std::nullopt;
        }
        return record;
    }

  private:
    bool ReadPart(BackupRecord& record) {
        const std::wstring path = Attribute(L"Path");
        const std::wstring copy = Attribute(L"Copy");
        if (TagIs(L"<Key>")) {
            record.keys.push_back(path);
            return !path.empty();
        }
        if (TagIs(L"<File>")) {
            record.files.push_back({path, copy});
            return IsPlainPath(path) && (copy.empty() || IsBackupCopyName(copy));
        }
        if (!TagIs(L"<Layout>") || !record.layout.empty()) return false;
        record.layout = copy;
        return IsBackupCopyName(copy);
    }

    /// Empty when it is not there.
    std::wstring Attribute(std::wstring_view name) {
        return FindAttribute(name) ? FoundAttribute().value_or(L"") : std::wstring();
    }
};

}  // namespace

std::optional<SYSTEMTIME> TimeOfBackup(const BackupRecord& record) {
    constexpr std::wstring_view kForm = L"yyyy-mm-ddThh:mm:ss.lllZ";
    if (record.time.size() != kForm.size()) return std::nullopt;
    SYSTEMTIME time{};
    WORD* const parts[] = {&time.wYear,   &time.wMonth,  &time.wDay,         &time.wHour,
                           &time.wMinute, &time.wSecond, &time.wMilliseconds};
    std::size_t part = 0;
    for (std::size_t i = 0; i < kForm.size(); ++i) {
        const wchar_t c = record.time[i];
        if (kForm[i] < L'a') {
            if (c != kForm[i]) return std::nullopt;
            ++part;
        } else {
            if (c < L'0' || c > L'9') return std::nullopt;
            *parts[part] = static_cast<WORD>(*parts[part] * 10 + (c - L'0'));
        }
    }
    return time;
}

DWORD WriteBackupRecord(const std::wstring& path, const BackupRecord& record) {
    return CanBeWritten(record) ? CXmlDoc::SaveText(path, TextOf(record)) : DWORD{ERROR_INVALID_NAME};
}

std::optional<BackupRecord> ReadBackupRecord(const std::wstring& path) { return CRecordReader().Read(path); }
