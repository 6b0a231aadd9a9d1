// Registrations to measure with. They go to the machine's real registry, so the bench runs in a prefix of its
// own.
#pragma once

#include <string>

/// Whether this registry was marked as one that may be filled.
bool IsBenchRegistry();

/// Adds registrations until there are `total`: an eighth each of filters, media objects, MIDI effects and
/// control surfaces, half VST inventory entries, every twentieth of which is the hidden 32-bit twin of the
/// one before. With the first call, an adapter inventory of 200.
void GrowStudio(int total);

/// The file of such an entry.
std::wstring BenchVstFile(int number);

/// Adds filters that wrap VST effects, with an adapter's entry each, until there are so many.
void GrowWrapped(int filters);
