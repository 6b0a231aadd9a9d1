#include "AccessibleName.h"

#include <objbase.h>
#include <oleacc.h>

#include <wrl/client.h>

#include "TextFormat.h"

namespace {

/// Null when there are none.
Microsoft::WRL::ComPtr<IAccPropServices> AccessibilityServices() {
    Microsoft::WRL::ComPtr<IAccPropServices> services;
    ::CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC, IID_IAccPropServices,
                       reinterpret_cast<void**>(services.GetAddressOf()));
    return services;
}

}  // namespace

void SetAccessibleName(HWND control, const std::wstring& name) {
    // Some readers ask the window, some the service.
    ::SetWindowTextW(control, WithoutMnemonic(name).c_str());
    SetReaderName(control, name);
}

void SetReaderName(HWND control, const std::wstring& name) {
    const std::wstring plain = WithoutMnemonic(name);
    if (const auto services = AccessibilityServices()) {
        services->SetHwndPropStr(control, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, PROPID_ACC_NAME,
                                 plain.c_str());
    }
}

void ClearAccessibleName(HWND control) {
    if (const auto services = AccessibilityServices()) {
        services->ClearHwndProps(control, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, &PROPID_ACC_NAME,
                                 1);
    }
}
