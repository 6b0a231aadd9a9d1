// Which entries of the VST inventory are plug-ins to list.
#pragma once

#include <optional>
#include <string>
#include <unordered_set>

#include "Classification.h"

/// One subkey of the inventory, as read. A text is absent when its value is missing or not well-formed.
struct VstEntry {
    VstKind kind;
    bool isShell = false;
    bool isShellRoot = false;
    bool isBad = false;
    bool isX64 = false;
    int uniqueId = 0;
    std::optional<std::wstring> clsidPlug;
    std::optional<std::wstring> clsidPlugMd5;
    std::optional<std::wstring> fullPath;
    std::wstring fullName;
    std::wstring vendor;
};

/// The entry is a VST or VST3 plug-in with an id and a file, not the container of a shell, not one that the
/// scanner failed on.
bool IsUsable(const VstEntry& entry);

/// The 64-bit plug-ins of an inventory, by the part of their class id that a 32-bit build shares.
class CTwinIndex {
  public:
    /// Every entry counts, also one that is not usable.
    void Add(const VstEntry& entry);
    /// A 32-bit entry that is not listed: a VST3 always, a VST when a 64-bit twin is there.
    bool Hides(const VstEntry& entry) const;

  private:
    std::unordered_set<std::wstring> m_prefixes;
};
