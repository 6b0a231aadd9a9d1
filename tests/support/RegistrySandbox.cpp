#include "support/RegistrySandbox.h"

#include <uuids.h>

#include <stdexcept>
#include <wrl/client.h>

#include "AudioRegistration.h"

namespace support {
namespace {

constexpr std::size_t kLongestText = 0x10000;
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

CLSID ToClsid(const std::wstring& text) {
    CLSID clsid{};
    CLSIDFromString(text.c_str(), &clsid);
    return clsid;
}

}  // namespace

RegistrySandbox::RegistrySandbox() {
    if (const auto list = CRegKey::Open(HKEY_CLASSES_ROOT, kCategoryList))
        RegCopyTreeW(list->Handle(), nullptr, CRegKey::Create(m_classes.Handle(), kCategoryList)->Handle());
    for (const wchar_t* path : kEmptyCategories) CreateKey(m_classes.Handle(), path);
    for (const auto& [root, target] : {std::pair(HKEY_LOCAL_MACHINE, &m_machine),
                                       {HKEY_CLASSES_ROOT, &m_classes},
                                       {HKEY_CURRENT_USER, &m_user}})
        Require(RegOverridePredefKey(root, target->Handle()) == ERROR_SUCCESS, "a root can't be redirected");
}

RegistrySandbox::~RegistrySandbox() {
    for (const HKEY root : {HKEY_CURRENT_USER, HKEY_CLASSES_ROOT, HKEY_LOCAL_MACHINE})
        RegOverridePredefKey(root, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, kScratch);
}

CRegKey RegistrySandbox::FreshScratch() {
    DeleteTree(HKEY_CURRENT_USER, kScratch);
    return CRegKey::Create(HKEY_CURRENT_USER, kScratch).value();
}

void CreateKey(HKEY root, const std::wstring& path) {
    Require(CRegKey::Create(root, path).has_value(), "a key can't be created");
}

void SetRaw(HKEY root, const std::wstring& path, const wchar_t* name, DWORD type,
            const std::vector<BYTE>& bytes) {
    // Where a zero happens to follow, the system takes it for the terminator that a text has not got.
    std::vector<BYTE> followed = bytes;
    followed.insert(followed.end(), {0xFF, 0xFF});
    Require(RegSetKeyValueW(root, path.c_str(), name, type, followed.data(),
                            static_cast<DWORD>(bytes.size())) == ERROR_SUCCESS,
            "a value can't be written");
}

void SetText(HKEY root, const std::wstring& path, const wchar_t* name, const std::wstring& text) {
    SetRaw(root, path, name, REG_SZ, Bytes({text.c_str(), text.size() + 1}));
}

void SetDword(HKEY root, const std::wstring& path, const wchar_t* name, DWORD value) {
    Require(CRegKey::Create(root, path).value().WriteDword(name, value), "a number can't be written");
}

std::vector<BYTE> Bytes(std::wstring_view text) {
    const auto* bytes = reinterpret_cast<const BYTE*>(text.data());
    return {bytes, bytes + text.size() * sizeof(wchar_t)};
}

bool Exists(HKEY root, const std::wstring& path) { return CRegKey::Open(root, path).has_value(); }

std::optional<std::wstring> Text(HKEY root, const std::wstring& path, const wchar_t* name) {
    const auto key = CRegKey::Open(root, path);
    return key ? key->ReadString(name, kLongestText) : std::nullopt;
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

}  // namespace support
