// What is known of the plug-ins that were found.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>

#include "Classification.h"
#include "Guid.h"

/// Neither the array of entries nor the exclusion list grows beyond this.
inline constexpr std::size_t kMaxEntries = 4096;

/// A plug-in registered with the system: a filter, a media object, a MIDI effect or a control surface.
struct PluginEntry {
    Guid clsid;
    std::optional<std::wstring> name;     // as listed: the database's, if it has one
    std::optional<std::wstring> ownName;  // as the plug-in is registered
    std::optional<Category> category;     // nothing: listed nowhere
};

/// A usable entry of the VST inventory.
struct VstInventoryRecord {
    std::wstring path;
    std::wstring name;
    std::wstring vendor;
    int uniqueId = 0;
    bool isX64 = false;
    VstKind kind;
    Guid clsid;
    Guid md5Clsid;
    std::optional<Category> category;
};

/// A VST is listed under its plug-in id, a VST3 under each of its two.
inline bool IsListedUnder(const VstInventoryRecord& record, const Guid& id) {
    const bool isVst2 =
        record.category == Category::VstEffects || record.category == Category::VstInstruments;
    return !record.name.empty() && !(isVst2 && id == record.md5Clsid);
}

// Whether there can be a row for it in the list of its category.
inline bool HasRow(const PluginEntry& entry) { return !entry.clsid.IsNull() && entry.name && entry.category; }
/// `id` is the class id that the record stands under.
inline bool HasRow(const Guid& id, const VstInventoryRecord& record) {
    return !id.IsNull() && record.category && IsListedUnder(record, id);
}

/// Each record stands here twice, under its plug-in class id and under its MD5 class id.
using VstInventoryMap = std::map<Guid, VstInventoryRecord, GuidByteOrder>;

/// Display names of the host's database, by class id text.
using NameMap = std::map<std::wstring, std::wstring>;

/// A plug-in of a list. Of several registrations of one class the first has the number 0.
struct PluginId {
    Guid clsid;
    unsigned namesake = 0;

    friend bool operator==(const PluginId&, const PluginId&) = default;
};

/// What a row of the plug-in list stands for.
struct PluginListItem {
    unsigned sourceIndex = 0;  // in the entry array; 0 for inventory rows
    Guid clsid;
    Guid md5Clsid;  // null for rows that are not of the inventory
    bool fromInventory = false;
    bool isX64 = false;
    Category category = Category::DirectXEffects;  // the one shown when the row was added
    unsigned namesake = 0;                         // of the class id, in the list

    PluginId Id() const { return {clsid, namesake}; }
};
