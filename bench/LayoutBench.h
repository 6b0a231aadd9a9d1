#pragma once

/// Reading and writing layout files, for growing layouts.
void BenchLayouts();
