#include "BackupRecord.h"

#include <algorithm>
#include <array>

#include "XmlDoc.h"

namespace {

constexpr wchar_t kRoot[] = L"Backup";
constexpr wchar_t kFormat[] = L"1";

constexpr std::array<BackupKind, 4> kKinds = {BackupKind::Registry, BackupKind::Presets, BackupKind::Layouts,
                                              BackupKind::Studio};

class CRecordWriter : public CXmlDoc {
  public:
    bool Write(const BackupRecord& record) {
        bool written = NewDocument() && SetHeader(L"xml", L"encoding", L"UTF-8") &&
                       CreateRootElement(kRoot) && SetAttribute(L"Format", kFormat) &&
                       SetAttribute(L"Kind", BackupKindWord(record.kind)) &&
                       SetAttribute(L"Step", record.step) && SetAttribute(L"Time", record.time) &&
                       SetAttribute(L"Version", record.version);
        for (const std::wstring& key : record.keys) written = written && Add(L"Key", {{L"Path", key}});
        for (const auto& file : record.files)
            written = written && Add(L"File", {{L"Path", file.path}, {L"Copy", file.copy}});
        return written && (record.layout.empty() || Add(L"Layout", {{L"Copy", record.layout}}));
    }

  private:
    struct Attribute {
        std::wstring_view name;
        std::wstring_view value;
    };
    bool Add(std::wstring_view element, std::initializer_list<Attribute> attributes) {
        const CKeepNode keep(*this);
        return AppendChildElement(element) && std::ranges::all_of(attributes, [this](const Attribute& one) {
                   return SetAttribute(one.name, one.value);
               });
    }
};

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
    CRecordWriter writer;
    if (!writer.Write(record)) return ERROR_INVALID_NAME;
    if (writer.Save(path)) return ERROR_SUCCESS;
    return writer.SaveError() != ERROR_SUCCESS ? writer.SaveError() : DWORD{ERROR_WRITE_FAULT};
}

std::optional<BackupRecord> ReadBackupRecord(const std::wstring& path) { return CRecordReader().Read(path); }
