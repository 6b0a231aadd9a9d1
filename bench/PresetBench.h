#pragma once

/// Counting the presets of many plug-ins, and presets to and from preset files.
void BenchPresets();
