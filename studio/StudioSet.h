// What a studio set holds, and how that differs from what a computer has.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Guid.h"

/// The choices that a user has made about plug-ins, and the menu layouts. Presets lie in a file of their own.
struct StudioSet {
    struct Exclusion {
        Guid clsid;
        std::wstring name;
        bool operator==(const Exclusion&) const = default;
    };
    struct PluginName {  // of a VST or VST3
        Guid clsid;
        Guid md5Clsid;
        std::wstring name;
        bool operator==(const PluginName&) const = default;
    };
    struct Layout {
        std::wstring file;  // a plain name
        std::wstring xml;   // the root element, as it is written
        bool operator==(const Layout&) const = default;
    };
    std::vector<Exclusion> exclusions{};
    std::vector<PluginName> names{};
    std::vector<Layout> layouts{};
    std::size_t passedOver = 0;  // entries of the file that were of no use

    bool operator==(const StudioSet&) const = default;
};

/// What a computer has of the same.
struct StudioPresent {
    std::vector<StudioSet::Exclusion> exclusions;
    std::function<bool(const Guid&)> isInstalled;
    struct Named {
        Guid id;               // of the plug-in that a name is for: of several names for it, one can be meant
        bool isExact = false;  // and not another copy of it
        std::wstring name;
    };
    /// Nothing when there is no such plug-in.
    std::function<std::optional<Named>(const StudioSet::PluginName&)> find;
    bool hasLayoutFolder = false;
    std::function<std::wstring(std::wstring)> inCapitals;
    std::set<std::wstring> layoutFiles;  // names in that folder, in capitals
    /// The layout of such a file; nothing for what is none.
    std::function<std::optional<std::wstring>(const std::wstring& file)> layoutOf;
};

enum class SetPart { Exclusion, PluginName, Layout, Presets };
enum class SetChange {
    New,
    Differs,       // a name or presets are replaced; a layout gets a file name that is free
    Same,          // there already
    Surplus,       // an exclusion that the set has not
    NotInstalled,  // so that a name or presets have no place
    NoFolder,      // so that a layout has none
};

/// One thing that a set has, or has not, and what loading does about it.
struct SetEntry {
    SetPart part = SetPart::Exclusion;
    SetChange change = SetChange::New;
    std::size_t index = 0;    // in the list of that part; of a surplus in that of the computer
    std::wstring name;        // of the plug-in or the layout's file
    std::wstring now{};       // the plug-in's present name
    std::wstring target{};    // the file that a layout is written to
    bool installed = true;    // an exclusion is written for a plug-in that may come later, too
    std::size_t presets = 0;  // all of the plug-in in the file
    std::size_t replaced = 0;
    bool chosen = false;

    /// What is not so is there to be read.
    bool CanBeChosen() const { return change <= SetChange::Differs || change == SetChange::Surplus; }
};

enum class SetMode {
    Add,
    Same,  // also takes away the exclusions that the set has not
};

/// Whether the mode would do it.
bool IsChosen(const SetEntry& entry, SetMode mode);

/// What the mode would do is chosen. Permanent exclusions are no entries.
std::vector<SetEntry> DiffOf(const StudioSet& set, const StudioPresent& present, SetMode mode);

/// How many exclusions there are in the end; the host and this program heed only kMaxEntries of them.
std::size_t ExclusionsAfter(const std::vector<SetEntry>& entries, std::size_t present);

/// A name that a layout of a set may have: a file ".pgl" in the folder, and none elsewhere.
bool IsLayoutFileName(const std::wstring& name);
