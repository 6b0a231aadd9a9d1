// A library that plays the host's plug-in database. Its data stand beside it: names.txt gives the names, one
// "key<TAB>name" a line in UTF-8, and calls.txt gets a line for each call. Filling fails where there is no
// names.txt, and setting a name with "refused" in it. With STAND_IN_NULL it has no database to give, with
// STAND_IN_NO_EXPORT nothing to call.
#include <windows.h>

#include <cwchar>
#include <filesystem>
#include <fstream>
#include <string>

/// The program's side of FillNames; the texts are copied during the call. Not in the unnamed namespace: there
/// the compiler would see that nothing implements it, and take the call for one that never happens.
class INames {
  public:
    virtual void Add(const wchar_t* key, const wchar_t* name) = 0;

  protected:
    ~INames() = default;
};

namespace {

std::filesystem::path Beside(const wchar_t* name) {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&Beside), &module);
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(module, path, MAX_PATH);
    return std::filesystem::path(path).replace_filename(name);
}

/// A path knows how to become UTF-8, and back.
std::wstring FromUtf8(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end())).wstring();
}

std::string ToUtf8(const std::wstring& text) {
    const auto bytes = std::filesystem::path(text).u8string();
    return {bytes.begin(), bytes.end()};
}

void Note(const std::wstring& call) {
    std::ofstream(Beside(L"calls.txt"), std::ios::app | std::ios::binary) << ToUtf8(call) << '\n';
}

/// The order of the functions is the library's binary contract.
class Database final {
  public:
    virtual HRESULT QueryInterface(const IID&, void**) { return Unexpected(0); }
    virtual ULONG AddRef() { return static_cast<ULONG>(Unexpected(1)); }
    virtual ULONG Release() { return static_cast<ULONG>(Unexpected(2)); }
    virtual HRESULT Slot3() { return Unexpected(3); }
    virtual HRESULT Slot4() { return Unexpected(4); }

    virtual HRESULT FillNames(INames* names) {
        Note(L"fill");
        std::ifstream file(Beside(L"names.txt"), std::ios::binary);
        if (!file) return E_FAIL;
        for (std::string line; std::getline(file, line);) {
            if (line.ends_with('\r')) line.pop_back();
            const auto tab = line.find('\t');
            if (tab == std::string::npos) continue;
            names->Add(FromUtf8(line.substr(0, tab)).c_str(), FromUtf8(line.substr(tab + 1)).c_str());
        }
        return S_OK;
    }

    virtual HRESULT Slot6() { return Unexpected(6); }

    virtual HRESULT SetName(const wchar_t* key, int kind, const wchar_t* name, int reserved1, int reserved2) {
        std::wstring call = std::wstring(L"set\t") + key + L'\t' + std::to_wstring(kind) + L'\t' + name;
        if (reserved1 != 0 || reserved2 != 0) call += L"\treserved";
        Note(call);
        return std::wcsstr(name, L"refused") ? E_ACCESSDENIED : S_OK;
    }

    virtual HRESULT Slot8() { return Unexpected(8); }
    virtual HRESULT Slot9() { return Unexpected(9); }
    virtual HRESULT Slot10() { return Unexpected(10); }

    virtual void Destroy() {
        Note(L"destroy");
        delete this;
    }

  private:
    ~Database() = default;

    static HRESULT Unexpected(int slot) {
        Note(L"unexpected\t" + std::to_wstring(slot));
        return E_NOTIMPL;
    }
};

}  // namespace

#ifndef STAND_IN_NO_EXPORT
extern "C" __declspec(dllexport) Database* CreateDatabase() {
#ifdef STAND_IN_NULL
    return nullptr;
#else
    return new Database;
#endif
}
#endif
