// What is measured, in groups; each prints its rows.
#pragma once

#include "Measure.h"

/// Finding and listing all plug-ins, and what a user does with them, for growing collections.
void BenchPlugins();
/// Reading, writing and editing layouts, for growing ones.
void BenchLayouts();
/// The backup before a step, of registry values and of files.
void BenchBackups();
/// Looking for what Tidy Up lists, and filling a layout with all plug-ins.
void BenchStudio();
/// Saving and loading studio sets.
void BenchStudioSets();
/// Counting the presets of many plug-ins, and presets to and from preset files.
void BenchPresets();
/// What the process holds after many rounds of everything.
void BenchRounds();

// Parts of BenchPlugins, for as many plug-ins as are registered then.
/// In the program's dialog.
void BenchDialog(int plugins);
/// The program as a process of its own.
void BenchStart(int plugins);
void BenchMemory(int plugins);
/// `ours` beside what would show the same keys without the program.
void BenchRegQuery(int plugins, const Work& ours);
void BenchWrapped();
/// How often the registry is called for each VST entry.
void CountCalls();
