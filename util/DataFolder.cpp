#include "DataFolder.h"

#include <windows.h>

#include <array>

std::wstring DataFolder() {
    std::wstring folder(::GetEnvironmentVariableW(L"LOCALAPPDATA", nullptr, 0), L'\0');
    folder.resize(
        ::GetEnvironmentVariableW(L"LOCALAPPDATA", folder.data(), static_cast<DWORD>(folder.size())));
    return folder.empty() ? folder : folder + L"\\Corvane Plug-in Manager";
}

std::wstring TimeForName() {
    SYSTEMTIME now{};
    ::GetLocalTime(&now);
    std::array<wchar_t, 32> text{};
    ::wsprintfW(text.data(), L"%04u-%02u-%02u %02u.%02u.%02u", now.wYear, now.wMonth, now.wDay, now.wHour,
                now.wMinute, now.wSecond);
    return text.data();
}
