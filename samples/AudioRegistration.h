// Plug-ins that only system calls can register.
#pragma once

#include <windows.h>

#include <strmif.h>

/// A filter with one audio input and one audio output.
bool RegisterAudioFilter(IFilterMapper2& mapper, const CLSID& clsid, const wchar_t* name);
/// An audio effect of the media object registry.
bool RegisterAudioDmo(const CLSID& clsid, const wchar_t* name);
