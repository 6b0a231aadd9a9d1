#pragma once

#include <objbase.h>

#include <string>

/// Copies a text that a COM function or a service allocated, and frees it; null gives an empty text.
inline std::wstring TakeTaskText(wchar_t* text) {
    std::wstring copy = text ? text : L"";
    ::CoTaskMemFree(text);
    return copy;
}
