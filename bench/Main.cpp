#include <windows.h>

#include <objbase.h>

#include <cstdio>
#include <string>
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
    {L"backups", BenchBackups}, {L"layouts", BenchLayouts},
    {L"rounds", BenchRounds},   {L"plugins", BenchPlugins},
    {L"studio", BenchStudio},   {L"sets", BenchStudioSets},
};

}  // namespace

/// --only NAME: one bench of the table; --json FILE: where the results go
int wmain(int count, wchar_t** arguments) {
    std::wstring_view only;
    std::wstring json;
    for (int i = 1; i + 1 < count; i += 2) {
        if (std::wstring_view(arguments[i]) == L"--only") only = arguments[i + 1];
        if (std::wstring_view(arguments[i]) == L"--json") json = arguments[i + 1];
    }
    if (!IsBenchRegistry()) {
        std::puts(
            "The bench fills the registry: it runs only in a prefix that scripts/bench.sh has made for it.");
        return 1;
    }
    if (FAILED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
    PrintHeader();
    for (const Bench& bench : kBenches) {
        if (only.empty() || only == bench.name) bench.run();
    }
    const bool allMet = Finish(json);
    ::CoUninitialize();
    return allMet ? 0 : 1;
}
