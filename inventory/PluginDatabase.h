// The host's plug-in database, reached through a library of the host.
#pragma once

#include <windows.h>

#include <string>

#include "Handles.h"
#include "PluginRecords.h"

/// What the database library calls to hand over names. Both texts are copied.
struct INames {
    virtual void STDMETHODCALLTYPE Add(const wchar_t* key, const wchar_t* name) = 0;

  protected:
    ~INames() = default;
};

/// The library's object, by the places in its table of operations; the unnamed ones are not called.
struct IPluginDatabase {
    virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) = 0;
    virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
    virtual ULONG STDMETHODCALLTYPE Release() = 0;
    virtual void STDMETHODCALLTYPE Slot3() = 0;
    virtual void STDMETHODCALLTYPE Slot4() = 0;
    /// Adds the display name of every plug-in under its class id text; for VST plug-ins, the MD5 class id.
    virtual HRESULT STDMETHODCALLTYPE FillNames(INames* names) = 0;
    virtual void STDMETHODCALLTYPE Slot6() = 0;
    /// `kind` is 2 for instruments, else 0; both reserved numbers are 0.
    virtual HRESULT STDMETHODCALLTYPE SetName(const wchar_t* key, int kind, const wchar_t* name,
                                              int reserved1, int reserved2) = 0;
    virtual void STDMETHODCALLTYPE Slot8() = 0;
    virtual void STDMETHODCALLTYPE Slot9() = 0;
    virtual void STDMETHODCALLTYPE Slot10() = 0;
    virtual void STDMETHODCALLTYPE Destroy() = 0;

  protected:
    ~IPluginDatabase() = default;
};

/// Database mode is on while an object is held; every failure silently leaves registry mode.
class CPluginDatabase {
  public:
    CPluginDatabase() = default;
    ~CPluginDatabase() { Close(); }
    CPluginDatabase(const CPluginDatabase&) = delete;
    CPluginDatabase& operator=(const CPluginDatabase&) = delete;

    /// Loads the library by its full path and asks it for the object.
    void Open(const std::wstring& libraryPath);
    /// Destroys the object, then unloads the library.
    void Close();

    bool IsOpen() const { return m_database != nullptr; }
    /// Empty when no database is open.
    NameMap Names() const;
    /// Stores the display name of a plug-in; for VST plug-ins `key` is the MD5 class id. A refusal is silent.
    void SetName(const std::wstring& key, int kind, const std::wstring& name) const;

  private:
    UniqueLibrary m_library;
    IPluginDatabase* m_database = nullptr;  // ended by Destroy
};
