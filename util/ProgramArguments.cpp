#include "ProgramArguments.h"

#include <windows.h>

#include <shellapi.h>

#include <memory>

std::vector<std::wstring> ProgramArguments() {
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&::LocalFree)> list(
        ::CommandLineToArgvW(::GetCommandLineW(), &count), &::LocalFree);
    if (!list || count < 1) return {};
    return {list.get() + 1, list.get() + count};
}
