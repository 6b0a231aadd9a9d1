// Where a plug-in's display name is written, and for which plug-ins that can be done.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "CorvaneKeys.h"
#include "PluginCategory.h"

enum class NameStore {
    ClassesRoot,   // a key below it
    LocalMachine,  // a key below it
    FilterBag,     // the property bag of the filter's registration
    VstEntry,      // the plug-in's entry in the VST inventory
    AdapterEntry,  // the plug-in's entry in the inventory of the legacy adapter
};

/// The categories as bits.
constexpr unsigned MaskOf(auto... categories) { return ((1U << static_cast<unsigned>(categories)) | ...); }

inline constexpr unsigned kFilterCategories =
    MaskOf(Category::DirectXEffects, Category::DirectXInstruments, Category::LegacyVstEffects,
           Category::LegacyVstInstruments);
inline constexpr unsigned kWrappedCategories =
    MaskOf(Category::LegacyVstEffects, Category::LegacyVstInstruments);
inline constexpr unsigned kVstCategories =
    MaskOf(Category::VstEffects, Category::VstInstruments, Category::Vst3Effects, Category::Vst3Instruments);

/// What ends the path of a key.
enum class PathEnd { ClassId, BareClassId, Nothing };

struct NamePlace {
    unsigned categories;  // a mask
    NameStore store;
    const wchar_t* path;   // of a key
    const wchar_t* value;  // null: the default value
    PathEnd end = PathEnd::ClassId;
};

/// In the order of writing. A key that is not there is passed over, but without the filter's property bag the
/// rest of a filter's places keeps its name, too.
inline constexpr NamePlace kNamePlaces[] = {
    {MaskOf(Category::MediaObjects), NameStore::ClassesRoot, kMediaObjectsKey, nullptr, PathEnd::BareClassId},
    {MaskOf(Category::ControlSurfaces), NameStore::ClassesRoot, kControlSurfacesKey, L"Description"},
    {MaskOf(Category::MidiEffects), NameStore::LocalMachine, kMidiFiltersKey, nullptr},
    {kVstCategories, NameStore::VstEntry, L"", L"FullName"},

    {kFilterCategories, NameStore::FilterBag, L"", L"FriendlyName"},
    // Kept: the key of the category's instances, not that of the plug-in among them.
    {kFilterCategories, NameStore::ClassesRoot, L"CLSID\\{083863F1-70DE-11D0-BD40-00A0C911CE86}\\Instance",
     L"FriendlyName", PathEnd::Nothing},
    {kFilterCategories, NameStore::ClassesRoot, L"Filter", nullptr},
    {MaskOf(Category::DirectXInstruments), NameStore::ClassesRoot, kSoftSynthsKey, L"Description"},
    {kWrappedCategories, NameStore::AdapterEntry, L"", L"FullName"},

    {kFilterCategories | MaskOf(Category::MidiEffects), NameStore::ClassesRoot, L"CLSID", nullptr},
    {kFilterCategories | MaskOf(Category::MidiEffects), NameStore::ClassesRoot, kPlugInsKey, L"Description"},
};

constexpr bool IsWrittenFor(const NamePlace& place, Category category) {
    return (place.categories & MaskOf(category)) != 0;
}

/// `clsid` is the text in braces.
std::wstring KeyPath(const NamePlace& place, const std::wstring& clsid);

/// Empty or nothing but blanks: not a name for a plug-in.
bool IsBlank(std::wstring_view name);

/// What an inventory stores as "FullName": the host puts "VST " before the names of some entries itself. A
/// name that is only this prefix is kept, because an entry without a name is not listed.
std::wstring StoredFullName(const std::wstring& name, bool hostAddsPrefix);

/// As much of a name as is read back where such plug-ins keep theirs: with more, the plug-in would be found
/// without its name, and listed no more or as something else.
std::wstring ReadableName(const std::wstring& name, Category category);

/// How many plug-ins of the entry array came from the sources that stand first in it.
struct SourceCounts {
    std::size_t filters = 0;
    std::size_t filtersAndMediaObjects = 0;
};

/// Kept: a VST row, whose index is 0, needs a filter as well; without any filter it can't be renamed.
constexpr bool CanBeRenamed(Category category, std::size_t sourceIndex, const SourceCounts& counts) {
    if (category == Category::MidiEffects || category == Category::ControlSurfaces) return true;
    return sourceIndex <
           (category == Category::MediaObjects ? counts.filtersAndMediaObjects : counts.filters);
}

/// The plug-in's kind for the database: 2 for an instrument.
constexpr int DatabaseKind(Category category) {
    return category == Category::DirectXInstruments || category == Category::VstInstruments ||
                   category == Category::Vst3Instruments
               ? 2
               : 0;
}
