#include "support/RegistrySandbox.h"

#include <windows.h>

#include <dmo.h>
#include <dmoreg.h>
#include <dshow.h>

#include <cstring>
#include <stdexcept>
#include <wrl/client.h>

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

struct KeyCloser {
    using pointer = HKEY;
    void operator()(HKEY key) const { RegCloseKey(key); }
};
using Key = std::unique_ptr<HKEY, KeyCloser>;

Key Open(HKEY root, const std::wstring& path) {
    HKEY key = nullptr;
    return Key(RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key) == ERROR_SUCCESS ? key : nullptr);
}

Key Create(HKEY root, const std::wstring& path) {
    HKEY key = nullptr;
    const auto result =
        RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    Require(result == ERROR_SUCCESS, "a key can't be created");
    return Key(key);
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
        if (const Key list = Open(HKEY_CLASSES_ROOT, kCategoryList))
            RegCopyTreeW(list.get(), nullptr, Create(classes.get(), kCategoryList).get());
        for (const wchar_t* path : kEmptyCategories) Create(classes.get(), path);
    }
    ~Scratch() { RegDeleteTreeW(HKEY_CURRENT_USER, kScratch); }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    static Key Fresh() {
        DeleteTree(HKEY_CURRENT_USER, kScratch);
        return Create(HKEY_CURRENT_USER, kScratch);
    }
    Key top = Fresh();
    Key user = Create(top.get(), L"User");
    Key machine = Create(top.get(), L"Machine");
    Key classes = Create(machine.get(), L"Software\\Classes");
};

class Redirection {
  public:
    Redirection(HKEY root, const Key& target) : m_root(root) {
        Require(RegOverridePredefKey(root, target.get()) == ERROR_SUCCESS, "a root can't be redirected");
    }
    ~Redirection() { RegOverridePredefKey(m_root, nullptr); }
    Redirection(const Redirection&) = delete;
    Redirection& operator=(const Redirection&) = delete;

  private:
    HKEY m_root;
};

struct Value {
    DWORD type = REG_NONE;
    std::vector<BYTE> bytes;
};

std::optional<Value> Read(HKEY root, const std::wstring& path, const wchar_t* name) {
    const Key key = Open(root, path);
    DWORD size = 0;
    if (!key || RegQueryValueExW(key.get(), name, nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS)
        return std::nullopt;
    Value value{REG_NONE, std::vector<BYTE>(size)};
    const auto result = RegQueryValueExW(key.get(), name, nullptr, &value.type, value.bytes.data(), &size);
    return result == ERROR_SUCCESS ? std::optional(value) : std::nullopt;
}

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
    Require(RegSetValueExW(Create(root, path).get(), name, 0, type, followed.data(), size) == ERROR_SUCCESS,
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

bool Exists(HKEY root, const std::wstring& path) { return Open(root, path) != nullptr; }

std::optional<std::wstring> Text(HKEY root, const std::wstring& path, const wchar_t* name) {
    const auto value = Read(root, path, name);
    if (!value || value->type != REG_SZ || value->bytes.empty() || value->bytes.size() % sizeof(wchar_t) != 0)
        return std::nullopt;
    std::wstring text(value->bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), value->bytes.data(), value->bytes.size());
    if (text.find(L'\0') != text.size() - 1) return std::nullopt;
    text.pop_back();
    return text;
}

std::optional<DWORD> Dword(HKEY root, const std::wstring& path, const wchar_t* name) {
    const auto value = Read(root, path, name);
    DWORD number = 0;
    if (!value || value->type != REG_DWORD || value->bytes.size() != sizeof(number)) return std::nullopt;
    std::memcpy(&number, value->bytes.data(), sizeof(number));
    return number;
}

std::vector<std::wstring> Subkeys(HKEY root, const std::wstring& path) {
    std::vector<std::wstring> names;
    const Key key = Open(root, path);
    wchar_t name[257];
    for (DWORD i = 0, length = 257; key; ++i, length = 257) {
        if (RegEnumKeyExW(key.get(), i, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            break;
        names.emplace_back(name, length);
    }
    return names;
}

void DeleteTree(HKEY root, const std::wstring& path) {
    RegDeleteTreeW(root, path.c_str());
    Require(!Exists(root, path), "a key can't be removed");
}

void RegisterAudioFilter(const std::wstring& clsid, const std::wstring& name) {
    const REGPINTYPES audio{&MEDIATYPE_Audio, &MEDIASUBTYPE_PCM};
    REGFILTERPINS pins[2]{};
    for (REGFILTERPINS& pin : pins) {
        pin.bOutput = &pin == &pins[1];
        pin.nMediaTypes = 1;
        pin.lpMediaType = &audio;
    }
    REGFILTER2 filter{};
    filter.dwVersion = 1;
    filter.dwMerit = MERIT_DO_NOT_USE;
    filter.cPins = 2;
    filter.rgPins = pins;

    Microsoft::WRL::ComPtr<IFilterMapper2> mapper;
    const CLSID id = ToClsid(clsid);
    Require(SUCCEEDED(CoCreateInstance(CLSID_FilterMapper2, nullptr, CLSCTX_INPROC_SERVER,
                                       IID_PPV_ARGS(&mapper))) &&
                SUCCEEDED(mapper->RegisterFilter(id, name.c_str(), nullptr, &CLSID_LegacyAmFilterCategory,
                                                 nullptr, &filter)),
            "a filter can't be registered");
}

void RegisterAudioDmo(const std::wstring& clsid, const std::wstring& name) {
    DMO_PARTIAL_MEDIATYPE audio{MEDIATYPE_Audio, MEDIASUBTYPE_PCM};
    const CLSID id = ToClsid(clsid);
    Require(SUCCEEDED(DMORegister(name.c_str(), id, DMOCATEGORY_AUDIO_EFFECT, 0, 1, &audio, 1, &audio)),
            "a media object can't be registered");
}

void RegisterServer(const std::wstring& clsid, const std::wstring& name, const std::wstring& file) {
    SetText(HKEY_CLASSES_ROOT, L"CLSID\\" + clsid, nullptr, name);
    SetText(HKEY_CLASSES_ROOT, L"CLSID\\" + clsid + L"\\InprocServer32", nullptr, file);
}

}  // namespace support
