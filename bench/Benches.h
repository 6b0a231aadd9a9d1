// What is measured. Each prints its rows.
#pragma once

/// Finding all plug-ins, for growing collections.
void BenchEnumeration();
/// Filling the plug-in list of a category, and adding plug-ins from it to a layout.
void BenchPanes();
/// Reading and writing layout files, for growing layouts.
void BenchLayouts();
/// The backup before a step, of registry values and of files.
void BenchBackups();
/// Looking for what Tidy Up lists, and filling a layout with all plug-ins.
void BenchStudio();
/// Saving and loading studio sets.
void BenchStudioSets();
/// Counting the presets of many plug-ins, and presets to and from preset files.
void BenchPresets();
