// Where the VST scanner and the adapter's configuration program are.
#pragma once

#include <string>

/// Read once at start; a path is empty when it is not registered.
struct VstToolPaths {
    std::wstring scanner;
    std::wstring adapterProgram;

    /// `vstKey` is the host's VST key below the current user's root.
    static VstToolPaths Read(const std::wstring& vstKey);

    bool ScannerExists() const;
    bool AdapterProgramExists() const;
};
