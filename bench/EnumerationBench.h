#pragma once

/// Finding all plug-ins, for growing collections.
void BenchEnumeration();
/// Filling the plug-in list of a category.
void BenchCategorySwitch();
