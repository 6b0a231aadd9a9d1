// The texts and values that automation interfaces take and give.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <optional>
#include <string>
#include <string_view>

#include "Handles.h"

using UniqueBstr = UniqueHandle<BSTR, &::SysFreeString>;

/// Null when there is no memory for it.
inline UniqueBstr BstrOf(std::wstring_view text) {
    return UniqueBstr(::SysAllocStringLen(text.data(), static_cast<UINT>(text.size())));
}
/// Up to the first zero; a null one is an empty text.
inline std::wstring TextOf(const wchar_t* text) { return text ? text : L""; }

/// Owns what its VARIANT holds.
class CVariant {
  public:
    CVariant() = default;
    /// Stays empty when there is no memory for the text.
    explicit CVariant(std::wstring_view text) {
        m_value.bstrVal = BstrOf(text).Release();
        if (m_value.bstrVal) m_value.vt = VT_BSTR;
    }
    explicit CVariant(VARIANT_BOOL value) {
        m_value.vt = VT_BOOL;
        m_value.boolVal = value;
    }
    /// VT_NULL for a null object.
    explicit CVariant(IUnknown* object) {
        m_value.vt = object ? VT_UNKNOWN : VT_NULL;
        m_value.punkVal = object;
        if (object) object->AddRef();
    }
    ~CVariant() { ::VariantClear(&m_value); }
    CVariant(const CVariant&) = delete;
    CVariant& operator=(const CVariant&) = delete;

    /// A call that fills it in needs an empty one.
    VARIANT& Get() { return m_value; }
    /// Nothing when it holds no text.
    std::optional<std::wstring> Text() const {
        return m_value.vt == VT_BSTR ? std::optional(TextOf(m_value.bstrVal)) : std::nullopt;
    }

  private:
    VARIANT m_value{};  // empty
};
