#include "PluginDatabase.h"

#include <utility>

namespace {

class CNameCollector final : public INames {
  public:
    explicit CNameCollector(NameMap& names) : m_names(names) {}

    void STDMETHODCALLTYPE Add(const wchar_t* key, const wchar_t* name) override {
        if (!key || !name) return;
        try {
            m_names.insert_or_assign(key, name);
        } catch (...) {
            // The caller is another module: it must not see an exception. The name is then missing.
            ::OutputDebugStringW(L"A plug-in name was lost.\n");
        }
    }

  private:
    NameMap& m_names;
};

}  // namespace

void CPluginDatabase::Open(const std::wstring& libraryPath) {
    Close();
    // Its own libraries may lie beside it or beside the program, but nothing is looked for in the current
    // folder.
    m_library.Reset(::LoadLibraryExW(libraryPath.c_str(), nullptr,
                                     LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_APPLICATION_DIR |
                                         LOAD_LIBRARY_SEARCH_SYSTEM32));
    if (!m_library) return;
    IPluginDatabase* (*create)() = nullptr;
    if (FindFunction(m_library.Get(), "CreateDatabase", create)) {
        m_database = create();
    } else {
        m_library.Reset();
    }
}

void CPluginDatabase::Close() {
    if (auto* database = std::exchange(m_database, nullptr)) database->Destroy();
    m_library.Reset();
}

NameMap CPluginDatabase::Names() const {
    NameMap names;
    CNameCollector collector(names);
    if (m_database) m_database->FillNames(&collector);
    return names;
}

void CPluginDatabase::SetName(const std::wstring& key, int kind, const std::wstring& name) const {
    if (m_database) m_database->SetName(key.c_str(), kind, name.c_str(), 0, 0);
}
