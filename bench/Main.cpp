#include <windows.h>

#include <objbase.h>

#include <cstdio>

#include "Benches.h"
#include "Measure.h"
#include "Studio.h"

int wmain() {
    if (!IsBenchRegistry()) {
        std::puts(
            "The bench fills the registry: it runs only in a prefix that scripts/bench.sh has made for it.");
        return 1;
    }
    if (FAILED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
    PrintHeader();
    BenchPresets();  // first, because it also looks at the peak of memory
    BenchBackups();
    BenchLayouts();
    BenchEnumeration();
    BenchPanes();
    BenchStudioSets();
    ::CoUninitialize();
    return 0;
}
