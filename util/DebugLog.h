// The hook for a logging service. None is attached: opening connects to nothing, and no error is ever
// counted.
#pragma once

#include <windows.h>

#include <unknwn.h>

/// What the program asks of a logging service.
struct ILoggingService : IUnknown {
    /// Query 9: the count of errors logged in this session.
    virtual int STDMETHODCALLTYPE Query(int query) = 0;
    /// Full path of the log file; the caller frees it with the COM task allocator.
    virtual wchar_t* STDMETHODCALLTYPE LogFilePath() = 0;
    /// The client goes away.
    virtual void STDMETHODCALLTYPE Detach(IUnknown* client) = 0;
};

inline constexpr int kQueryErrorCount = 9;

struct IVemoLogClientAdvise : IUnknown {
    /// The client lets go of the service.
    virtual HRESULT STDMETHODCALLTYPE Advise() = 0;
};

/// {E3369462-2F19-43DB-B1D1-B72ABBF7BFA9}
inline constexpr GUID kLogClientAdviseId = {
    0xE3369462, 0x2F19, 0x43DB, {0xB1, 0xD1, 0xB7, 0x2A, 0xBB, 0xF7, 0xBF, 0xA9}};

/// Lives as long as its owner: references are only counted, never deleted through.
class CDebugLog final : public IVemoLogClientAdvise {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override { return --m_references; }
    HRESULT STDMETHODCALLTYPE Advise() override;

    /// Connects to nothing; gives 0.
    int Open(const wchar_t* /*name*/) { return 0; }
    /// Null while unconnected.
    ILoggingService* Service() const { return m_service; }
    int Close() { return 1; }

  private:
    BOOL m_connected = FALSE;
    ILoggingService* m_service = nullptr;  // counted; released by Advise
    ULONG m_references = 0;
};
