#pragma once

#include <windows.h>

inline constexpr unsigned kRingBuffers = 32;
inline constexpr unsigned kRingCharacters = 512;

/// Loads a text of the string table into the next of 32 buffers, cut to 511 characters; a missing one gives
/// an empty text. The result stays valid until 32 further loads have been made. For the main thread only.
const wchar_t* LoadRingText(UINT id);
