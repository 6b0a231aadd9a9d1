#include "VstToolPaths.h"

#include <windows.h>

#include <shlwapi.h>

#include "CorvaneKeys.h"
#include "RegKey.h"

namespace {

std::wstring ReadToolPath(HKEY root, const std::wstring& path, const wchar_t* name) {
    const auto key = CRegKey::Open(root, path);
    return key ? key->ReadUnterminated(name, kPathBytes).value_or(L"") : L"";
}

}  // namespace

VstToolPaths VstToolPaths::Read(const std::wstring& vstKey) {
    return {.scanner = ReadToolPath(HKEY_CURRENT_USER, vstKey, L"VSTScanPath"),
            .adapterProgram = ReadToolPath(HKEY_LOCAL_MACHINE, kAdapterKey, L"VSTConfigWizardPath")};
}

bool VstToolPaths::ScannerExists() const { return ::PathFileExistsW(scanner.c_str()) != FALSE; }

bool VstToolPaths::AdapterProgramExists() const { return ::PathFileExistsW(adapterProgram.c_str()) != FALSE; }
