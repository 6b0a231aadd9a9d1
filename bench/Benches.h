// The groups of rows.
#pragma once

void BenchPresets();
void BenchBackups();
void BenchLayouts();
/// What the process holds after a hundred rounds of everything.
void BenchRounds();
/// The names of plug-ins that the legacy adapter wraps, of which it registers many.
void BenchWrapped();
/// The program until its window shows, when it has not looked for anything yet.
void BenchWindow();

// With as many plug-ins as are registered then:

/// Finding them, and what a user does with them in the dialog.
void BenchPlugins(int plugins);
/// What goes over all plug-ins, layouts and presets at once.
void BenchStudio(int plugins);
void BenchStudioSets(int plugins);
/// The program as a process of its own, until the list is filled.
void BenchStarts(int plugins);
