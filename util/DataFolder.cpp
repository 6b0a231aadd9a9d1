#include "DataFolder.h"

#include <windows.h>

#include <shlobj.h>

#include <array>

#include "TaskText.h"

std::wstring DataFolder() {
    wchar_t* folder = nullptr;
    ::SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &folder);
    const std::wstring local = TakeTaskText(folder);
    return local.empty() ? local : local + L"\\Corvane Plug-in Manager";
}

std::wstring TimeForName() {
    SYSTEMTIME now{};
    ::GetLocalTime(&now);
    std::array<wchar_t, 32> text{};
    ::wsprintfW(text.data(), L"%04u-%02u-%02u %02u.%02u.%02u", now.wYear, now.wMonth, now.wDay, now.wHour,
                now.wMinute, now.wSecond);
    return text.data();
}
