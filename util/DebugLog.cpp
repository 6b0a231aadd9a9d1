#include "DebugLog.h"

HRESULT CDebugLog::QueryInterface(REFIID id, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (!::IsEqualIID(id, IID_IUnknown) && !::IsEqualIID(id, kLogClientAdviseId)) return E_NOINTERFACE;
    *object = static_cast<IVemoLogClientAdvise*>(this);
    AddRef();
    return S_OK;
}

HRESULT CDebugLog::Advise() {
    if (m_connected && m_service) {
        m_service->Detach(this);
        m_service->Release();
        m_service = nullptr;
    }
    m_connected = FALSE;
    return S_OK;
}
