#pragma once

/// Finding all plug-ins, for growing collections.
void BenchEnumeration();
/// Filling the plug-in list of a category, and adding plug-ins from it to a layout.
void BenchPanes();
