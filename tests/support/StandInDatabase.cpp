// A library that plays the host's plug-in database. Its data stand beside it: names.txt gives the names, one
// "key<TAB>name" a line, and calls.txt gets a line for each call; all of it in ASCII. Filling fails where
// there is no names.txt, and setting a name with "refused" in it. As null.dll it has no database to give.
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

std::filesystem::path OwnPath() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&OwnPath), &module);
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(module, path, MAX_PATH);
    return path;
}

void Note(const std::wstring& call) {
    std::wofstream(OwnPath().replace_filename(L"calls.txt"), std::ios::app | std::ios::binary)
        << call << L'\n';
}

HRESULT FillNames(void*, INames* names) {
    Note(L"fill");
    std::wifstream file(OwnPath().replace_filename(L"names.txt"));
    if (!file) return E_FAIL;
    for (std::wstring key, name; std::getline(file, key, L'\t') && std::getline(file, name);)
        names->Add(key.c_str(), name.c_str());
    return S_OK;
}

HRESULT SetName(void*, const wchar_t* key, int kind, const wchar_t* name, int reserved1, int reserved2) {
    Note(std::wstring(L"set\t") + key + L'\t' + std::to_wstring(kind) + L'\t' + name +
         (reserved1 != 0 || reserved2 != 0 ? L"\treserved" : L""));
    return std::wcsstr(name, L"refused") ? E_ACCESSDENIED : S_OK;
}

void Unexpected() { Note(L"unexpected"); }
void Destroy() { Note(L"destroy"); }

/// The order of the operations is the library's binary contract.
using Operation = void (*)();
const Operation kOperations[] = {&Unexpected, &Unexpected,
                                 &Unexpected, &Unexpected,
                                 &Unexpected, reinterpret_cast<Operation>(&FillNames),
                                 &Unexpected, reinterpret_cast<Operation>(&SetName),
                                 &Unexpected, &Unexpected,
                                 &Unexpected, &Destroy};
const Operation* g_database = kOperations;

}  // namespace

extern "C" __declspec(dllexport) const Operation** CreateDatabase() {
    return OwnPath().filename() == L"null.dll" ? nullptr : &g_database;
}
