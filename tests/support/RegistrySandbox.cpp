#include "support/RegistrySandbox.h"

#include <windows.h>

#include <uuids.h>

#include <cstring>
#include <stdexcept>
#include <wrl/client.h>

#include "AudioRegistration.h"

namespace support {
namespace {

constexpr wchar_t kScratch[] = L"Software\\CorvaneTestSandbox";
// The filter mapper wants a list of categories, and the categories themselves; empty ones will do.
constexpr wchar_t kCategoryList[] = L"CLSID\\{DA4E3DA0-D07D-11d0-BD50-00A0C911CE86}";
constexpr const wchar_t* kEmptyCategories[] = {
    L"CLSID\\{083863F1-70DE-11d0-BD40-00A0C911CE86}\\Instance",
    L"DirectShow\\MediaObjects\\Categories",
};

void Require(bool done, const char* what) {
    if (!done) throw std::runtime_error(std::string("registry fixture: ") + what);
}

CRegKey Create(HKEY root, const std::wstring& path) {
    auto key = CRegKey::Create(root, path, KEY_ALL_ACCESS);
    Require(key.has_value(), "a key can't be created");
    return std::move(*key);
}

class Turn {
  public:
    Turn() : m_mutex(CreateMutexW(nullptr, FALSE, L"CorvaneTestSandbox")) {
        // The thread that holds a mutex gets it a second time; a second sandbox would undo the first.
        Require(!s_taken, "there is a sandbox already");
        const DWORD wait = WaitForSingleObject(m_mutex, 60'000);
        if (wait != WAIT_OBJECT_0 && wait != WAIT_ABANDONED) {
            CloseHandle(m_mutex);
            Require(false, "another test process keeps its sandbox");
        }
        s_taken = true;
    }
    ~Turn() {
        s_taken = false;
        ReleaseMutex(m_mutex);
        CloseHandle(m_mutex);
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

  private:
    static inline bool s_taken = false;
    HANDLE m_mutex;
};

struct Scratch {
    Scratch() {
        if (const auto list = CRegKey::Open(HKEY_CLASSES_ROOT, kCategoryList))
            RegCopyTreeW(list->Handle(), nullptr, Create(classes.Handle(), kCategoryList).Handle());
        for (const wchar_t* path : kEmptyCategories) Create(classes.Handle(), path);
    }
    ~Scratch() { RegDeleteTreeW(HKEY_CURRENT_USER, kScratch); }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    static CRegKey Fresh() {
        DeleteTree(HKEY_CURRENT_USER, kScratch);
        return Create(HKEY_CURRENT_USER, kScratch);
    }
    CRegKey top = Fresh();
    CRegKey user = Create(top.Handle(), L"User");
    CRegKey machine = Create(top.Handle(), L"Machine");
    CRegKey classes = Create(machine.Handle(), L"Software\\Classes");
};

class Redirection {
  public:
    Redirection(HKEY root, const CRegKey& target) : m_root(root) {
        Require(RegOverridePredefKey(root, target.Handle()) == ERROR_SUCCESS, "a root can't be redirected");
    }
    ~Redirection() { RegOverridePredefKey(m_root, nullptr); }
    Redirection(const Redirection&) = delete;
    Redirection& operator=(const Redirection&) = delete;

  private:
    HKEY m_root;
};

CLSID ToClsid(const std::wstring& text) {
    CLSID clsid{};
    Require(SUCCEEDED(CLSIDFromString(text.c_str(), &clsid)), "that is no class id");
    return clsid;
}

}  // namespace

struct RegistrySandbox::State {
    Turn turn;
    Scratch scratch;
    Redirection machine{HKEY_LOCAL_MACHINE, scratch.machine};
    Redirection classes{HKEY_CLASSES_ROOT, scratch.classes};
    Redirection user{HKEY_CURRENT_USER, scratch.user};
};

RegistrySandbox::RegistrySandbox() : m_state(std::make_unique<State>()) {}
RegistrySandbox::~RegistrySandbox() = default;

void CreateKey(HKEY root, const std::wstring& path) { Create(root, path); }

void SetRaw(HKEY root, const std::wstring& path, const wchar_t* name, DWORD type,
            const std::vector<BYTE>& bytes) {
    // Where a zero happens to follow, the system takes it for the terminator that a text has not got.
    std::vector<BYTE> followed = bytes;
    followed.insert(followed.end(), {0xFF, 0xFF});
    const auto size = static_cast<DWORD>(bytes.size());
    Require(
        RegSetValueExW(Create(root, path).Handle(), name, 0, type, followed.data(), size) == ERROR_SUCCESS,
        "a value can't be written");
}

void SetText(HKEY root, const std::wstring& path, const wchar_t* name, const std::wstring& text) {
    SetRaw(root, path, name, REG_SZ, Bytes({text.c_str(), text.size() + 1}));
}

void SetDword(HKEY root, const std::wstring& path, const wchar_t* name, DWORD value) {
    std::vector<BYTE> bytes(sizeof(value));
    std::memcpy(bytes.data(), &value, sizeof(value));
    SetRaw(root, path, name, REG_DWORD, bytes);
}

std::vector<BYTE> Bytes(std::wstring_view text) {
    std::vector<BYTE> bytes(text.size() * sizeof(wchar_t));
    if (!bytes.empty()) std::memcpy(bytes.data(), text.data(), bytes.size());
    return bytes;
}

bool Exists(HKEY root, const std::wstring& path) { return CRegKey::Open(root, path).has_value(); }

std::optional<std::wstring> Text(HKEY root, const std::wstring& path, const wchar_t* name) {
    const auto key = CRegKey::Open(root, path);
    const auto value = key ? key->ReadValue(name) : std::nullopt;
    if (!value || value->type != REG_SZ || value->data.size() % sizeof(wchar_t) != 0) return std::nullopt;
    std::wstring text(value->data.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), value->data.data(), value->data.size());
    if (text.empty() || text.find(L'\0') != text.size() - 1) return std::nullopt;
    text.pop_back();
    return text;
}

std::optional<DWORD> Dword(HKEY root, const std::wstring& path, const wchar_t* name) {
    const auto key = CRegKey::Open(root, path);
    return key ? key->ReadDword(name) : std::nullopt;
}

std::vector<std::wstring> Subkeys(HKEY root, const std::wstring& path) {
    const auto key = CRegKey::Open(root, path);
    return key ? key->SubkeyNames() : std::vector<std::wstring>();
}

void DeleteTree(HKEY root, const std::wstring& path) {
    RegDeleteTreeW(root, path.c_str());
    Require(!Exists(root, path), "a key can't be removed");
}

void RegisterAudioFilter(const std::wstring& clsid, const std::wstring& name) {
    Microsoft::WRL::ComPtr<IFilterMapper2> mapper;
    Require(SUCCEEDED(CoCreateInstance(CLSID_FilterMapper2, nullptr, CLSCTX_INPROC_SERVER,
                                       IID_PPV_ARGS(&mapper))) &&
                ::RegisterAudioFilter(*mapper.Get(), ToClsid(clsid), name.c_str()),
            "a filter can't be registered");
}

void RegisterAudioDmo(const std::wstring& clsid, const std::wstring& name) {
    Require(::RegisterAudioDmo(ToClsid(clsid), name.c_str()), "a media object can't be registered");
}

ReadOnlyKey::ReadOnlyKey(HKEY root, const std::wstring& path)
    : m_key(CRegKey::Open(root, path, READ_CONTROL | WRITE_DAC)) {
    Require(m_key.has_value(), "there is no key to lock");
    alignas(ACL) BYTE list[128];
    BYTE everyone[SECURITY_MAX_SID_SIZE];
    DWORD size = sizeof everyone;
    CreateWellKnownSid(WinWorldSid, nullptr, everyone, &size);
    InitializeAcl(reinterpret_cast<ACL*>(list), sizeof list, ACL_REVISION);
    AddAccessAllowedAce(reinterpret_cast<ACL*>(list), ACL_REVISION, KEY_READ, everyone);
    Require(Allow(reinterpret_cast<ACL*>(list)), "a key can't be locked");
}

ReadOnlyKey::~ReadOnlyKey() {
    Allow(nullptr);  // everything
}

bool ReadOnlyKey::Allow(ACL* list) const {
    SECURITY_DESCRIPTOR descriptor{};
    InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
    SetSecurityDescriptorDacl(&descriptor, TRUE, list, FALSE);
    return RegSetKeySecurity(m_key->Handle(), DACL_SECURITY_INFORMATION, &descriptor) == ERROR_SUCCESS;
}

}  // namespace support
