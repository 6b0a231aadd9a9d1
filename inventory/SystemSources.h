// Where the plug-ins that are registered with the system come from.
#pragma once

#include <windows.h>

#include <objidl.h>

#include <optional>
#include <string>
#include <vector>
#include <wrl/client.h>

#include "Guid.h"
#include "PluginRecords.h"

using MonikerPtr = Microsoft::WRL::ComPtr<IMoniker>;

struct FoundPlugin {
    Guid clsid;
    std::optional<std::wstring> name;
};

/// Up to `limit` plug-ins of one source; none when the source can't be opened.
struct FoundPlugins {
    std::vector<FoundPlugin> plugins;
    bool complete = true;  // false: a class id did not parse, which ends the whole enumeration there
};

/// The audio filters of the system's filter mapper, as monikers of their registrations.
std::vector<MonikerPtr> FindFilterMonikers(std::size_t limit);
/// One filter for each moniker, in order; the null id where the registration tells none.
FoundPlugins ReadFilters(const std::vector<MonikerPtr>& monikers);

/// Sets a text of a filter's registration; false when there is no filter or it refuses.
bool WriteProperty(const MonikerPtr& moniker, const wchar_t* name, const std::wstring& text);

FoundPlugins FindMediaObjects(std::size_t limit);

/// `keyNames` are the subkeys of the MIDI filter key. A plug-in without a name is left out.
FoundPlugins ReadMidiEffects(const std::vector<std::wstring>& keyNames, const NameMap& names,
                             std::size_t limit);
/// `keyNames` are the subkeys of the control surface key. A surface without a description is left out.
FoundPlugins ReadControlSurfaces(const std::vector<std::wstring>& keyNames, std::size_t limit);

/// The database's name for a class id, if it has one that is not empty.
std::optional<std::wstring> FindName(const NameMap& names, const std::wstring& clsid);
