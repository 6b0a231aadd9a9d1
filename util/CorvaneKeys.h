// The registry keys that the host's programs share, and what they register plug-ins under.
#pragma once

// Below the current user's root.
inline constexpr wchar_t kExclusionKey[] = L"Software\\Corvane Music Software\\ExcludedPlugIns";
inline constexpr wchar_t kDefaultVstKey[] = L"Software\\Corvane Music Software\\Corvane VST";
inline constexpr wchar_t kAudioPresetsKey[] = L"Software\\Corvane Music Software\\ActiveMovie\\Presets";
inline constexpr wchar_t kMidiPresetsKey[] = L"Software\\Corvane Music Software\\MIDI Filters\\Presets";
inline constexpr wchar_t kSurfacePresetsKey[] = L"Software\\Corvane Music Software\\ControlSurfaces\\Presets";

// Below the local machine's root.
inline constexpr wchar_t kCompanyKey[] = L"Software\\Corvane Music Software";
inline constexpr wchar_t kAdapterKey[] = L"Software\\Corvane Music Software\\Corvane VST Adapter";
inline constexpr wchar_t kMidiFiltersKey[] = L"Software\\Corvane Music Software\\MIDI Filters";
inline constexpr wchar_t kToolsMenuKey[] = L"Software\\Corvane Music Software\\Tools Menu";

// This program's own: below the current user's root and, after a registration, below the local machine's,
// too.
inline constexpr wchar_t kManagerKey[] = L"Software\\Corvane Music Software\\Corvane Plugin Manager";

// Below the root of the classes.
inline constexpr wchar_t kControlSurfacesKey[] = L"CorvaneControlSurfaces";
inline constexpr wchar_t kSoftSynthsKey[] = L"QtzSoftSynths";
inline constexpr wchar_t kPlugInsKey[] = L"CorvanePlugIns";
inline constexpr wchar_t kMediaObjectsKey[] = L"DirectShow\\MediaObjects";  // the system's own
