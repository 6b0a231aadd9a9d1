#include <windows.h>

#include <objbase.h>

#include <cstdio>
#include <string_view>

#include "Benches.h"
#include "Measure.h"
#include "Studio.h"

namespace {

struct Bench {
    std::wstring_view name;
    void (*run)();
};
constexpr Bench kBenches[] = {
    {L"presets", BenchPresets},  // first, because it also looks at the peak of memory
    {L"backups", BenchBackups}, {L"layouts", BenchLayouts}, {L"enumeration", BenchEnumeration},
    {L"panes", BenchPanes},     {L"studio", BenchStudio},   {L"sets", BenchStudioSets},
};

}  // namespace

/// Runs all, or one when it is named.
int wmain(int count, wchar_t** arguments) {
    if (!IsBenchRegistry()) {
        std::puts(
            "The bench fills the registry: it runs only in a prefix that scripts/bench.sh has made for it.");
        return 1;
    }
    if (FAILED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
    PrintHeader();
    for (const Bench& bench : kBenches) {
        if (count < 2 || bench.name == arguments[1]) bench.run();
    }
    ::CoUninitialize();
    return 0;
}
