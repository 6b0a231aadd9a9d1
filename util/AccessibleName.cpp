#include "AccessibleName.h"

#include <objbase.h>
#include <oleacc.h>

#include <wrl/client.h>

namespace {

std::wstring WithoutMnemonic(std::wstring text) {
    const std::size_t mark = text.find(L'&');
    if (mark == std::wstring::npos) return text;
    // Where words have no Latin letters, the key stands behind them: "(&Y)".
    const bool inBrackets = mark > 0 && text[mark - 1] == L'(' && text.find(L')', mark) == mark + 2;
    return inBrackets ? text.erase(mark - 1, 4) : text.erase(mark, 1);
}

}  // namespace

void SetAccessibleName(HWND control, const std::wstring& name) {
    const std::wstring plain = WithoutMnemonic(name);
    // Some readers ask the window, some the service.
    ::SetWindowTextW(control, plain.c_str());
    Microsoft::WRL::ComPtr<IAccPropServices> services;
    if (FAILED(::CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC, IID_IAccPropServices,
                                  reinterpret_cast<void**>(services.GetAddressOf())))) {
        return;
    }
    services->SetHwndPropStr(control, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, PROPID_ACC_NAME,
                             plain.c_str());
}
