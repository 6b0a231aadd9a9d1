// What the program does, with each call of the system going wrong in turn, and ended at each of its writes:
// what that leaves, what is said of it, and what comes back of it.
#include <objbase.h>
#include <shlwapi.h>

#include <gtest/gtest.h>

#include "ExclusionList.h"
#include "LayoutFolder.h"
#include "LayoutReader.h"
#include "PluginRemoval.h"
#include "PresentStudio.h"
#include "PresetWriter.h"
#include "Process.h"
#include "Scope.h"
#include "StudioSets.h"
#include "support/SandboxImporter.h"
#include "support/Snapshot.h"
#include "support/SystemCalls.h"
#include "support/TestPlugins.h"

namespace {

using support::Differences;
using support::Snapshot;

enum class Fault {
    None,
    Once,  // one call fails, as it may when the system is short of something
    Ended  // a write leaves a half, and no further one is done
};
Fault g_fault = Fault::None;
int g_left = 0;         // calls that get through still
bool g_struck = false;  // one did not

enum class Gets { Through, HalfThrough, Nowhere };
Gets NextCall(bool writes = true) {
    if (g_fault == Fault::None || (g_fault == Fault::Ended && !writes)) return Gets::Through;
    if (g_left > 0) return --g_left, Gets::Through;
    const bool first = !std::exchange(g_struck, true);
    if (g_fault == Fault::Once && !first) return Gets::Through;
    ::SetLastError(ERROR_NO_SYSTEM_RESOURCES);
    return g_fault == Fault::Ended && first ? Gets::HalfThrough : Gets::Nowhere;
}

template <auto kFunction>
struct Call;
template <typename TResult, typename... TArguments, TResult (*kFunction)(TArguments...)>
struct Call<kFunction> {
    static inline TResult (*s_system)(TArguments...) = nullptr;
    static inline TResult s_failure{};
    static inline bool s_writes = false;
    static TResult Do(TArguments... arguments) {
        return NextCall(s_writes) == Gets::Through ? s_system(arguments...) : s_failure;
    }
    static void Watch(const wchar_t* library, const char* name, TResult failure, bool writes = false) {
        s_failure = failure;
        s_writes = writes;
        Lead(library, name, &Do);
    }
    static void Lead(const wchar_t* library, const char* name, TResult (*to)(TArguments...)) {
        s_system = support::LeadCalls(library, name, to);
        EXPECT_TRUE(s_system) << name;
    }
};

BOOL WriteHalf(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD done, LPOVERLAPPED overlapped) {
    const Gets gets = NextCall();
    if (gets == Gets::Through) return Call<&::WriteFile>::s_system(file, bytes, size, done, overlapped);
    if (gets == Gets::HalfThrough) Call<&::WriteFile>::s_system(file, bytes, size / 2, done, overlapped);
    return FALSE;
}
BOOL CopyHalf(LPCWSTR from, LPCWSTR to, BOOL onlyNew) {
    const Gets gets = NextCall();
    if (gets == Gets::Through) return Call<&::CopyFileW>::s_system(from, to, onlyNew);
    if (gets == Gets::HalfThrough) std::ofstream(std::filesystem::path(to)) << "half";
    return FALSE;
}
HANDLE Create(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD how, DWORD flags,
              HANDLE like) {
    if (NextCall(how != OPEN_EXISTING) != Gets::Through) return INVALID_HANDLE_VALUE;
    return Call<&::CreateFileW>::s_system(path, access, share, security, how, flags, like);
}

/// Thousands of times, the disk would take minutes.
BOOL Flush(HANDLE) { return NextCall(/*writes*/ false) == Gets::Through; }

void WatchAll() {
    const wchar_t* library = L"kernel32";
    constexpr bool kWrites = true;
    Call<&::WriteFile>::Lead(library, "WriteFile", &WriteHalf);
    Call<&::CopyFileW>::Lead(library, "CopyFileW", &CopyHalf);
    Call<&::CreateFileW>::Lead(library, "CreateFileW", &Create);
    Call<&::MoveFileExW>::Watch(library, "MoveFileExW", FALSE, kWrites);
    Call<&::DeleteFileW>::Watch(library, "DeleteFileW", FALSE, kWrites);
    Call<&::SetEndOfFile>::Watch(library, "SetEndOfFile", FALSE, kWrites);
    Call<&::CreateDirectoryW>::Watch(library, "CreateDirectoryW", FALSE, kWrites);
    Call<&::RemoveDirectoryW>::Watch(library, "RemoveDirectoryW", FALSE, kWrites);
    Call<&::SetFileAttributesW>::Watch(library, "SetFileAttributesW", FALSE, kWrites);
    Call<&::FlushFileBuffers>::Lead(library, "FlushFileBuffers", &Flush);
    Call<&::ReadFile>::Watch(library, "ReadFile", FALSE);
    Call<&::SetFilePointerEx>::Watch(library, "SetFilePointerEx", FALSE);
    Call<&::GetFileSizeEx>::Watch(library, "GetFileSizeEx", FALSE);
    Call<&::GetFileType>::Watch(library, "GetFileType", FILE_TYPE_UNKNOWN);
    Call<&::GetFileInformationByHandle>::Watch(library, "GetFileInformationByHandle", FALSE);
    Call<&::GetFileAttributesW>::Watch(library, "GetFileAttributesW", INVALID_FILE_ATTRIBUTES);
    Call<&::GetFileAttributesExW>::Watch(library, "GetFileAttributesExW", FALSE);
    Call<&::GetFullPathNameW>::Watch(library, "GetFullPathNameW", 0);
    Call<&::FindFirstFileW>::Watch(library, "FindFirstFileW", INVALID_HANDLE_VALUE);
    Call<&::FindNextFileW>::Watch(library, "FindNextFileW", FALSE);
    Call<&::CreateProcessW>::Watch(library, "CreateProcessW", FALSE);
    library = L"advapi32";
    Call<&::RegCreateKeyExW>::Watch(library, "RegCreateKeyExW", ERROR_ACCESS_DENIED, kWrites);
    Call<&::RegSetValueExW>::Watch(library, "RegSetValueExW", ERROR_ACCESS_DENIED, kWrites);
    Call<&::RegDeleteValueW>::Watch(library, "RegDeleteValueW", ERROR_ACCESS_DENIED, kWrites);
    Call<&::RegDeleteKeyW>::Watch(library, "RegDeleteKeyW", ERROR_ACCESS_DENIED, kWrites);
    Call<&::RegOpenKeyExW>::Watch(library, "RegOpenKeyExW", ERROR_ACCESS_DENIED);
    Call<&::RegQueryValueExW>::Watch(library, "RegQueryValueExW", ERROR_ACCESS_DENIED);
    Call<&::RegQueryInfoKeyW>::Watch(library, "RegQueryInfoKeyW", ERROR_NO_SYSTEM_RESOURCES);
    Call<&::RegEnumKeyExW>::Watch(library, "RegEnumKeyExW", ERROR_NO_SYSTEM_RESOURCES);
    Call<&::RegEnumValueW>::Watch(library, "RegEnumValueW", ERROR_NO_SYSTEM_RESOURCES);
    Call<&::SHDeleteKeyW>::Watch(L"shlwapi", "SHDeleteKeyW", ERROR_ACCESS_DENIED, kWrites);
    Call<&::SHCreateMemStream>::Watch(L"shlwapi", "SHCreateMemStream", nullptr);
    Call<&::CoCreateInstance>::Watch(L"ole32", "CoCreateInstance", E_OUTOFMEMORY);
    Call<&::CreateStreamOnHGlobal>::Watch(L"ole32", "CreateStreamOnHGlobal", E_OUTOFMEMORY);
    Call<&::OleRegGetUserType>::Watch(L"ole32", "OleRegGetUserType", E_OUTOFMEMORY);
}

std::size_t CountHandles() {
    std::size_t count = 0;
    for (ULONG_PTR handle = 4; handle < 0x8000; handle += 4) {
        DWORD flags = 0;
        if (::GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags)) ++count;
    }
    return count;
}

std::string Said(bool done) { return done ? "done" : "failed"; }

constexpr unsigned kSilent = 1, kBackedUp = 2, kAfterDeletion = 4, kWithFilter = 8, kEnumerates = 16,
                   kLeavesParts = 32;  // when it is ended
struct Step {
    const char* name;
    std::function<std::string(CBackups& backups)> run;  // gives what is said, if anything is
    unsigned is = 0;
    bool Is(unsigned what) const { return (is & what) != 0; }
};

class FaultsAnywhere : public testing::Test {
  protected:
    static void SetUpTestSuite() { WatchAll(); }
    // The folder is read once by the process; the sandbox is the same one for all tests.
    FaultsAnywhere() { ::SetEnvironmentVariableW(L"CorvaneAppDataRoot", m_files.Folder().c_str()); }

    CBackups NewRun() const { return {m_files.Path(L"Backups"), L"1", &Imports}; }
    /// Another program does that: it is ended by itself, or refuses all.
    static DWORD Imports(const CWindow& owner, BackupHive hive, std::wstring_view text) {
        if (g_fault == Fault::Once && NextCall() != Gets::Through) return ERROR_WRITE_FAULT;
        const Fault fault = g_fault;
        const CScopeExit restore([fault] { g_fault = fault; });
        if (fault == Fault::Once) g_fault = Fault::None;
        return support::ImportIntoSandbox(owner, hive, text);
    }
    void Store(const std::wstring& name, std::size_t size, char fill) const {
        CPresetWriter writer(m_hall);
        const std::vector<std::byte> data(size, static_cast<std::byte>(fill));
        EXPECT_TRUE(writer.StoreImportedPreset({.type = 3, .name = name, .data = data}));
    }
    /// What each step begins with. The backup "Earlier" holds that, where nothing is left of it.
    void Prepare(const Step& step) const {
        support::DeleteTree(HKEY_CURRENT_USER, kCompanyKey);
        for (const wchar_t* folder : {L"Backups", L"Shared Presets", L"Layouts", L"Out"})
            std::filesystem::remove_all(m_files.Path(folder));
        std::filesystem::create_directory(m_files.Path(L"Layouts"));
        std::filesystem::create_directory(m_files.Path(L"Out"));
        support::AddVst(1, L"Hall").Text(L"clsidPlug", L"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}");
        support::SetText(HKEY_CURRENT_USER, support::kExcludedPlugins + support::IdText(1), nullptr, L"Old");
        m_files.Write(L"Layouts\\one.pgl", "<PluginMenuLayout DocSchema='1' Name='old'/>");
        Store(L"small", 9, 'o');
        Store(L"large", 2000, 'o');
        Store(L"was large", 2000, 'o');
        if (step.Is(kWithFilter)) support::RegisterAudioFilter(support::IdText(5), L"Plate");
        if (!step.Is(kAfterDeletion)) return;
        CBackups backups = NewRun();
        Delete(backups, L"Earlier");
        Store(L"small", 9, 'x');
        Store(L"added", 2000, 'x');
    }

    // The steps. Where no backup can be made, the user would rather not go on.
    std::string Save(CBackups& backups) const {
        const CBackup backup = backups.Make({BackupKind::Layouts, L"Step", {}, {m_layout}, true});
        CXmlDoc document;
        return Said(backup.Error() == ERROR_SUCCESS && document.NewDocument() &&
                    document.CreateRootElement(L"New") && document.Save(m_layout));
    }
    std::string Import(CBackups& backups) const {
        BackupStep step{.kind = BackupKind::Presets, .name = L"Step", .keys = {}, .files = {}};
        auto file = CFileSource::Open(m_file);
        if (!file) return Said(false);
        NameImportIn(step, *file, std::span(&m_hall, 1), nullptr);
        const CBackup backup = backups.Make(step);
        file->Seek(0);
        return Said(backup.Error() == ERROR_SUCCESS && ImportPresets(*file, m_hall, nullptr) == 4);
    }
    /// All without a name.
    std::string Delete(CBackups& backups, const wchar_t* name, const wchar_t* preset = nullptr) const {
        BackupStep step{.kind = BackupKind::Presets, .name = name, .keys = {}, .files = {}};
        m_hall.NameIn(step, preset ? std::vector<std::wstring>{preset} : std::vector<std::wstring>(), true);
        const CBackup backup = backups.Make(step);
        CPatience patience;
        return Said(backup.Error() == ERROR_SUCCESS &&
                    (preset ? m_hall.DeletePreset(preset, patience) : m_hall.DeleteAllPresets()));
    }
    std::string Export() const {
        auto file = CFileSink::Create(m_out);
        const int presets = file ? ExportPresets(*file, m_hall, nullptr) : kPresetIoFailure;
        file.reset();
        // Kept: one whose file can't be read to its end is left out.
        CPatience patience;
        if (presets != 3) DeleteHeldFile(m_out, patience);
        return Said(presets == 3);
    }
    static std::string Enumerate() {
        const CPluginDatabase database;
        CPluginInventory inventory(kDefaultVstKey, database);
        return Said(inventory.Enumerate(true));
    }
    /// After an enumeration in which nothing fails.
    template <typename TStep>
    std::string InStudio(CBackups& backups, TStep&& step) const {
        const CPluginDatabase database;
        CPluginInventory inventory(kDefaultVstKey, database);
        const Fault fault = std::exchange(g_fault, Fault::None);
        inventory.Enumerate(true);
        g_fault = fault;
        CFriendlyNames names(inventory, database);
        CStudioSets sets(inventory, names, backups, m_files.Path(L"Layouts"));
        return step(inventory, names, sets);
    }
    std::string Rename(CBackups& backups) const {
        return InStudio(backups, [this](auto& inventory, auto& names, auto&) {
            const auto plugin = FindNamed(inventory, {m_hall.Clsid(), {}, {}});
            return Said(plugin && names.Rename(plugin->item, L"New"));
        });
    }
    std::string SaveSet(CBackups& backups) const {
        return InStudio(backups, [this](auto&, auto&, auto& sets) {
            SetToSave save;
            // What can't be read is not there for it; what it has is written whole.
            const Fault fault = std::exchange(g_fault, Fault::None);
            sets.Gather(save, true, {});
            g_fault = fault;
            return Said(sets.Save(save, m_out + L".pgset", L"Step", {}).result == SetResult::Done);
        });
    }
    std::string LoadSet(CBackups& backups) const {
        return InStudio(backups, [this](auto&, auto&, auto& sets) {
            SetToLoad load;
            if (sets.Plan(m_files.Path(L"presets.pgset"), SetMode::Same, true, load, {}).result !=
                SetResult::Done)
                return Said(false);
            const bool done = sets.Load(load, L"Step", CWindow(), {}).result == SetResult::Done;
            // What is loaded is what the user was shown.
            return Said(done) + std::to_string(load.CountChosen());
        });
    }
    std::string Remove(CBackups& backups) const {
        const BackupStep step{.kind = BackupKind::Registry,
                              .name = L"Step",
                              .keys = RegistrationKeys(support::Id(5), Category::DirectXEffects),
                              .files = {}};
        const CBackup backup = backups.Make(step);
        if (backup.Error() == ERROR_SUCCESS) UnregisterPlugin(support::Id(5), Category::DirectXEffects);
        return Said(backup.Error() == ERROR_SUCCESS);
    }
    static std::string Restore(CBackups& backups) {
        const auto list = backups.List();
        return Said(!list.empty() && backups.Restore(list.back(), L"Step", CWindow(),
                                                     [](DWORD) { return false; }) == ERROR_SUCCESS);
    }
    static std::string DeleteBackup(CBackups& backups) {
        const auto list = backups.List();
        return Said(!list.empty() && backups.Delete(list.back()));
    }
    std::string ReadLayouts() const {
        std::string names;
        const LayoutPlugins plugins{[](const Guid&) { return nullptr; }, [](LayoutItem&) {}};
        for (const LayoutFile& file : ScanLayoutFolder(m_files.Path(L"Layouts"))) {
            CLayoutReader reader(plugins);
            names += reader.Load(file.path, false) ? 'r' : 'u';
        }
        return names;
    }
    static std::string StartScanner() {
        const auto process = CProcess::Start(CWindow(), L"C:\\windows\\system32\\cmd.exe", L" /c exit");
        return Said(process && process->WaitDispatching(CWindow()));
    }

    /// Each value and each file, but the mark for the host, which stays, the backups and, of a program that
    /// was ended, what is written beside a file.
    Snapshot Now(Fault fault = Fault::None) const {
        Snapshot now;
        support::AddKey(now, HKEY_CURRENT_USER, kCompanyKey);
        support::AddKey(now, HKEY_LOCAL_MACHINE, L"Software\\Classes\\CLSID");
        support::AddFiles(now, m_files.Folder());
        std::erase_if(now, [fault](const auto& entry) {
            const std::wstring& name = entry.first;
            return name.starts_with(kManagerKey) || name.find(L"Backups\\") != std::wstring::npos ||
                   (fault == Fault::Ended && name.ends_with(L".tmp"));
        });
        return now;
    }

    std::string Run(const Step& step, Fault fault, int calls) const {
        CBackups backups = NewRun();
        g_left = calls;
        g_struck = false;
        g_fault = fault;
        const CScopeExit restore([] { g_fault = Fault::None; });
        return step.run(backups);
    }
    void Walk(const Step& step, Fault fault) const {
        Prepare(step);
        const Snapshot before = Now();
        const std::string said = Run(step, Fault::None, 0);
        const Snapshot after = Now();
        std::size_t handles = 0;
        int calls = 0;
        for (; calls == 0 || g_struck; ++calls) {
            SCOPED_TRACE(step.name + std::string(fault == Fault::Once ? " with a failure" : " ended") +
                         " after calls: " + std::to_string(calls));
            Prepare(step);
            const std::string now = Run(step, fault, calls);
            const Snapshot left = Now(fault);
            const auto fromNew = Differences(left, after);
            for (const std::wstring& name : Differences(left, before))
                EXPECT_FALSE(fromNew.contains(name)) << testing::PrintToString(name);
            const bool isTold = step.Is(kSilent) || fault == Fault::Ended || now != said;
            EXPECT_TRUE(isTold || left == after) << now;
            CBackups anew = NewRun();
            bool backedUp = !step.Is(kBackedUp);
            for (const BackupEntry& backup : backedUp ? std::vector<BackupEntry>() : anew.List()) {
                const bool ofStep = backup.record.step == L"Step";
                backedUp = backedUp || ofStep;
                EXPECT_EQ(anew.Restore(backup, L"Back", CWindow(), [](DWORD) { return false; }), 0U);
                EXPECT_EQ(Differences(Now(fault), ofStep ? before : after), std::set<std::wstring>());
            }
            EXPECT_TRUE(backedUp || left == before);
            if (calls == 0) handles = CountHandles();
        }
        // The system opens a few once, and its filter mapper may keep some with each enumeration.
        const std::size_t held = CountHandles();
        EXPECT_TRUE(step.Is(kEnumerates) || held <= handles + 3)
            << step.name << ": " << handles << " to " << held;
    }

    support::RegistrySandbox m_registry;
    const support::FileSandbox m_files;
    const std::wstring m_layout = m_files.Path(L"Layouts\\one.pgl"), m_file = m_files.Path(L"presets.spp"),
                       m_out = m_files.Path(L"Out\\out");
    const CPresetListMgr m_hall{"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}"_guid,
                                RowOf(Category::VstEffects).guid, L"Hall"};
};

TEST_F(FaultsAnywhere, LeaveTheOldOrTheNewAndTheBackupBringsBackTheOld) {
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
    const Step kSteps[] = {
        {"exclude", [](auto&) { return Said(CExclusionList::Exclude(support::Id(3), L"New")); }},
        {"enable", [](auto&) { return Said(CExclusionList::Enable(support::Id(1))); }},
        {"import", [&](auto& backups) { return Import(backups); }, kSilent | kBackedUp},
        {"delete a preset", [&](auto& backups) { return Delete(backups, L"Step", L"large"); },
         kSilent | kBackedUp},
        {"delete presets", [&](auto& backups) { return Delete(backups, L"Step"); }, kSilent | kBackedUp},
        {"rename a preset", [&](auto&) { return Said(m_hall.RenamePreset(L"large", L"other")); }},
        {"read layouts", [&](auto&) { return ReadLayouts(); }, kSilent},
        {"save", [&](auto& backups) { return Save(backups); }, kBackedUp},
        {"restore", [&](auto& backups) { return Restore(backups); }, kBackedUp | kAfterDeletion},
        {"delete a backup", [&](auto& backups) { return DeleteBackup(backups); }, kAfterDeletion},
        {"scanner", [](auto&) { return StartScanner(); }},
        {"enumerate", [&](auto&) { return Enumerate(); }, kSilent | kEnumerates},
        {"rename", [&](auto& backups) { return Rename(backups); }, kEnumerates},
        {"save a set", [&](auto& backups) { return SaveSet(backups); }, kEnumerates},
        {"load a set", [&](auto& backups) { return LoadSet(backups); }, kBackedUp | kEnumerates},
        {"export", [&](auto&) { return Export(); }, kLeavesParts},
        {"remove", [&](auto& backups) { return Remove(backups); },
         kSilent | kBackedUp | kWithFilter | kLeavesParts},
    };
    for (const Step& step : kSteps) {
        Walk(step, Fault::Once);
        if (!step.Is(kLeavesParts)) Walk(step, Fault::Ended);
    }
}

}  // namespace
