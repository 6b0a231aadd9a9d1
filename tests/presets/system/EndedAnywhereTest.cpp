// Steps that take something away, ended at each of their writes: what they leave, and what comes back of it.
#include <windows.h>

#include <shlwapi.h>

#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <map>

#include "Backups.h"
#include "FileStream.h"
#include "PluginCategory.h"
#include "PresetTransfer.h"
#include "PresetWriter.h"
#include "StudioSets.h"
#include "XmlDoc.h"
#include "support/FileSandbox.h"
#include "support/RegistrySandbox.h"
#include "support/SandboxImporter.h"
#include "support/TestPlugins.h"

namespace {

int g_left = std::numeric_limits<int>::max();  // writes that get through still
bool g_ended = false;                          // one did not: none will

/// What was ended while it wrote leaves a half.
enum class Gets { Through, HalfThrough, Nowhere };
Gets NextWrite() {
    if (g_left > 0) return --g_left, Gets::Through;
    ::SetLastError(ERROR_WRITE_FAULT);
    return std::exchange(g_ended, true) ? Gets::Nowhere : Gets::HalfThrough;
}

/// Leads the program's own calls of a function of the system to another one.
template <typename TFunction>
void Redirect(const wchar_t* library, const char* name, TFunction* to, TFunction*& system) {
    auto* const base = reinterpret_cast<BYTE*>(::GetModuleHandleW(nullptr));
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IAT];
    const auto slots =
        std::span(reinterpret_cast<void**>(base + imports.VirtualAddress), imports.Size / sizeof(void*));
    void* const from = reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(library), name));
    const auto slot = std::ranges::find(slots, from);
    ASSERT_NE(slot, slots.end()) << name;
    DWORD access = PAGE_READWRITE;
    ::VirtualProtect(&*slot, sizeof(void*), access, &access);
    system = reinterpret_cast<TFunction*>(from);
    *slot = reinterpret_cast<void*>(to);
    ::VirtualProtect(&*slot, sizeof(void*), access, &access);
}

template <auto kFunction>
struct Write;
template <typename TResult, typename... TArguments, TResult (*kFunction)(TArguments...)>
struct Write<kFunction> {
    static inline TResult (*s_system)(TArguments...) = nullptr;
    static TResult Call(TArguments... arguments) {
        if (NextWrite() == Gets::Through) return s_system(arguments...);
        return static_cast<TResult>(std::is_same_v<TResult, BOOL> ? FALSE : ERROR_WRITE_FAULT);
    }
    static void Watch(const wchar_t* library, const char* name) { Redirect(library, name, &Call, s_system); }
};

decltype(&::WriteFile) g_writeFile = nullptr;
decltype(&::CopyFileW) g_copyFile = nullptr;
decltype(&::CreateFileW) g_createFile = nullptr;

BOOL WriteHalf(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD done, LPOVERLAPPED overlapped) {
    const Gets gets = NextWrite();
    if (gets == Gets::Through) return g_writeFile(file, bytes, size, done, overlapped);
    if (gets == Gets::HalfThrough) g_writeFile(file, bytes, size / 2, done, overlapped);
    return FALSE;
}
BOOL CopyHalf(LPCWSTR from, LPCWSTR to, BOOL onlyNew) {
    const Gets gets = NextWrite();
    if (gets == Gets::Through) return g_copyFile(from, to, onlyNew);
    if (gets == Gets::HalfThrough) std::ofstream(std::filesystem::path(to)) << "half";
    return FALSE;
}
HANDLE Create(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD how, DWORD flags,
              HANDLE like) {
    if (how != OPEN_EXISTING && NextWrite() != Gets::Through) return INVALID_HANDLE_VALUE;
    return g_createFile(path, access, share, security, how, flags, like);
}

constexpr wchar_t kKey[] =
    L"SOFTWARE\\Corvane Music Software\\ActiveMovie\\Presets\\{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}";
const std::wstring kEntry = std::wstring(support::kVstInventory) + L"Hall";

class EndedAnywhere : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        const wchar_t* library = L"kernel32";
        Redirect(library, "WriteFile", &WriteHalf, g_writeFile);
        Redirect(library, "CopyFileW", &CopyHalf, g_copyFile);
        Redirect(library, "CreateFileW", &Create, g_createFile);
        Write<&::MoveFileExW>::Watch(library, "MoveFileExW");
        Write<&::DeleteFileW>::Watch(library, "DeleteFileW");
        Write<&::SetEndOfFile>::Watch(library, "SetEndOfFile");
        Write<&::CreateDirectoryW>::Watch(library, "CreateDirectoryW");
        Write<&::RemoveDirectoryW>::Watch(library, "RemoveDirectoryW");
        Write<&::SetFileAttributesW>::Watch(library, "SetFileAttributesW");
        library = L"advapi32";
        Write<&::RegCreateKeyExW>::Watch(library, "RegCreateKeyExW");
        Write<&::RegSetValueExW>::Watch(library, "RegSetValueExW");
        Write<&::RegDeleteValueW>::Watch(library, "RegDeleteValueW");
        Write<&::RegDeleteKeyW>::Watch(library, "RegDeleteKeyW");
        Write<&::SHDeleteKeyW>::Watch(L"shlwapi", "SHDeleteKeyW");
    }
    // The folder is read once by the process; the sandbox is the same one for all tests.
    EndedAnywhere() { ::SetEnvironmentVariableW(L"CorvaneAppDataRoot", m_files.Folder().c_str()); }

    CBackups NewRun() const { return {m_files.Path(L"Backups"), L"1", &support::ImportIntoSandbox}; }
    void Store(const std::wstring& name, std::size_t size, char fill) const {
        CPresetWriter writer(m_hall);
        const std::vector<std::byte> data(size, static_cast<std::byte>(fill));
        EXPECT_TRUE(writer.StoreImportedPreset({.type = 3, .name = name, .data = data}));
    }
    /// What each step begins with. The backup "Earlier" holds that, where nothing is left of it.
    void Prepare(bool deleted) const {
        support::DeleteTree(HKEY_CURRENT_USER, kKey);
        std::filesystem::remove_all(m_files.Path(L"Backups"));
        std::filesystem::remove_all(m_files.Path(L"Shared Presets"));
        std::filesystem::remove(m_files.Path(L"one (2).pgl"));
        support::DeleteTree(HKEY_CURRENT_USER, kExclusionKey);
        support::AddVst(1, L"Hall").Text(L"clsidPlug", kKey + std::wcslen(kKey) - 38);
        support::SetText(HKEY_CURRENT_USER, support::kExcludedPlugins + support::IdText(1), nullptr, L"Old");
        m_files.Write(L"one.pgl", "old");
        Store(L"small", 9, 'o');
        Store(L"large", 2000, 'o');
        Store(L"was large", 2000, 'o');
        if (!deleted) return;
        CBackups backups = NewRun();
        Delete(backups, L"Earlier");
        Store(L"small", 9, 'x');
        Store(L"added", 2000, 'x');
    }

    // The steps. Where no backup can be made, the user would rather not go on.
    void Save(CBackups& backups) const {
        const CBackup backup = backups.Make({BackupKind::Layouts, L"Step", {}, {m_layout}, true});
        CXmlDoc document;
        if (backup.Error() == ERROR_SUCCESS && document.NewDocument() && document.CreateRootElement(L"New"))
            document.Save(m_layout);
    }
    void Import(CBackups& backups) const {
        BackupStep step{.kind = BackupKind::Presets, .name = L"Step", .keys = {}, .files = {}};
        auto file = CFileSource::Open(m_file);
        NameImportIn(step, *file, std::span(&m_hall, 1), nullptr);
        const CBackup backup = backups.Make(step);
        file = CFileSource::Open(m_file);
        if (backup.Error() == ERROR_SUCCESS) ImportPresets(*file, m_hall, nullptr);
    }
    void Delete(CBackups& backups, const wchar_t* name) const {
        BackupStep step{.kind = BackupKind::Presets, .name = name, .keys = {}, .files = {}};
        m_hall.NameIn(step, {}, true);
        const CBackup backup = backups.Make(step);
        if (backup.Error() == ERROR_SUCCESS) m_hall.DeleteAllPresets();
    }
    void LoadSet(CBackups& backups) const {
        const CPluginDatabase database;
        CPluginInventory inventory(kDefaultVstKey, database);
        inventory.Enumerate(true);
        CFriendlyNames names(inventory, database);
        CStudioSets sets(inventory, names, backups, m_files.Folder().wstring());
        SetToLoad load;
        EXPECT_EQ(sets.Plan(m_files.Path(L"presets.pgset"), SetMode::Same, true, load, {}).result,
                  SetResult::Done);
        sets.Load(load, L"Step", CWindow(), {});
    }
    static void Restore(CBackups& backups) {
        backups.Restore(backups.List().back(), L"Step", CWindow(), [](DWORD) { return false; });
    }

    /// Each value and each file, but the backups and what is written beside a file.
    using State = std::map<std::wstring, std::string>;
    State Now() const {
        State state;
        if (const auto key = CRegKey::Open(HKEY_CURRENT_USER, kKey)) {
            for (CRegValues values(*key, 519); values.Next();) {
                const auto data = values.Data();
                state[values.Name()].assign(reinterpret_cast<const char*>(data.data()), data.size());
            }
        }
        for (const std::wstring& id : support::Subkeys(HKEY_CURRENT_USER, kExclusionKey)) state[id] = "";
        const auto plugin = support::Text(HKEY_CURRENT_USER, kEntry, L"FullName");
        state[kEntry] = plugin == L"Hall" ? "old" : plugin == L"New" ? "new" : "half";
        for (const auto& file : std::filesystem::recursive_directory_iterator(m_files.Folder())) {
            const std::wstring path = file.path().wstring();
            if (file.is_regular_file() && path.find(L"Backups\\") == std::wstring::npos &&
                !path.ends_with(L".tmp"))
                state[path] = "file " + m_files.Read(path);
        }
        return state;
    }
    static void ExpectOldOrNew(const State& now, const State& before, const State& after) {
        const auto in = [](const State& state, const std::wstring& name) {
            const auto found = state.find(name);
            return found != state.end() ? found->second : "nothing";
        };
        State all = now;
        for (const State* state : {&before, &after}) all.insert(state->begin(), state->end());
        for (const auto& [name, value] : all) {
            const std::string left = in(now, name);
            EXPECT_TRUE(left == in(before, name) || left == in(after, name)) << testing::PrintToString(name);
        }
    }

    support::RegistrySandbox m_registry;
    const support::FileSandbox m_files;
    const std::wstring m_layout = m_files.Path(L"one.pgl"), m_file = m_files.Path(L"presets.spp");
    const CPresetListMgr m_hall{"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}"_guid,
                                RowOf(Category::VstEffects).guid, L"Hall"};
};

TEST_F(EndedAnywhere, EachValueAndFileIsOldOrNewAndTheBackupBringsBackTheOld) {
    for (const auto& [name, size] :
         {std::pair(L"small", 8), {L"large", 1500}, {L"was large", 7}, {L"new", 1500}})
        Store(name, static_cast<std::size_t>(size), 'n');
    auto file = CFileSink::Create(m_file);
    ASSERT_EQ(ExportPresets(*file, m_hall, nullptr), 4);
    file.reset();
    m_files.Write(L"presets.pgset",
                  "<StudioSet Schema='1'><Exclusion CLSID='{00000002-0001-0002-0000-000000000000}'/>"
                  "<PluginName CLSIDMD5='{00000065-0001-0002-0000-000000000000}' Name='New'/>"
                  "<Layout File='one.pgl'><PluginMenuLayout Name='n'/></Layout></StudioSet>");
    const std::pair<const char*, std::function<void(CBackups&)>> kSteps[] = {
        {"load a set", [&](CBackups& backups) { LoadSet(backups); }},
        {"save", [&](CBackups& backups) { Save(backups); }},
        {"import", [&](CBackups& backups) { Import(backups); }},
        {"delete", [&](CBackups& backups) { Delete(backups, L"Step"); }},
        {"restore", [&](CBackups& backups) { Restore(backups); }}};
    for (const auto& named : kSteps) {
        const auto& what = named.first;
        const auto& step = named.second;
        const bool restores = std::string(what) == "restore";
        const auto run = [&](int writes) {
            Prepare(restores);
            CBackups backups = NewRun();
            g_left = writes;
            g_ended = false;
            step(backups);
            g_left = std::numeric_limits<int>::max();
        };
        Prepare(restores);
        const State before = Now();
        run(std::numeric_limits<int>::max());
        const State after = Now();
        EXPECT_NE(before, after);
        for (int writes = 0; writes == 0 || g_ended; ++writes) {
            SCOPED_TRACE(what + std::string(" ended after writes: ") + std::to_string(writes));
            run(writes);
            const State left = Now();
            ExpectOldOrNew(left, before, after);
            CBackups anew = NewRun();
            bool backedUp = false;
            for (const BackupEntry& backup : anew.List()) {
                const bool ofStep = backup.record.step == L"Step";
                backedUp = backedUp || ofStep;
                EXPECT_EQ(anew.Restore(backup, L"Back", CWindow(), [](DWORD) { return false; }), 0U);
                EXPECT_EQ(Now(), ofStep ? before : after);
            }
            EXPECT_TRUE(backedUp || left == before);
        }
    }
}

}  // namespace
