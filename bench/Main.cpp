#include <windows.h>

#include <objbase.h>

#include <cstdio>
#include <string>
#include <string_view>

#include "Benches.h"
#include "Holdings.h"
#include "Measure.h"
#include "Studio.h"

namespace {

template <typename... TArguments>
struct Bench {
    std::wstring_view name;
    void (*run)(TArguments...);
};
constexpr Bench<> kFirst[] = {
    {L"presets", BenchPresets},  // before all others, because it also looks at the peak of memory
    {L"backups", BenchBackups},
    {L"layouts", BenchLayouts},
    {L"rounds", BenchRounds},
};
constexpr Bench<int> kInGrowingStudio[] = {{L"plugins", BenchPlugins},
                                           {L"studio", BenchStudio},
                                           {L"sets", BenchStudioSets},
                                           {L"starts", BenchStarts}};
constexpr Bench<> kLast[] = {{L"wrapped", BenchWrapped}, {L"window", BenchWindow}};

template <typename TBenches, typename... TArguments>
void Run(const TBenches& benches, std::wstring_view only, TArguments... arguments) {
    for (const auto& bench : benches) {
        if (!only.empty() && only != bench.name) continue;
        const ULONGLONG start = ::GetTickCount64();
        const Holdings before = Holdings::Now();
        bench.run(arguments...);
        const Holdings after = Holdings::Now();
        std::printf(
            "%ls: %llu s, peak %.0f MB; handles %d to %d, GDI objects %d to %d, user objects %d to %d\n",
            bench.name.data(), (::GetTickCount64() - start) / 1000, PeakMegabytes(), before.handles,
            after.handles, before.gdiObjects, after.gdiObjects, before.userObjects, after.userObjects);
    }
}

}  // namespace

/// --only NAME: one bench of the tables; --json FILE: where the results go
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
    Run(kFirst, only);
    for (const int plugins : {500, 1000, 2000, 4000}) {
        GrowStudio(plugins);
        Run(kInGrowingStudio, only, plugins);
    }
    Run(kLast, only);
    const bool allMet = Finish(json);
    ::CoUninitialize();
    return allMet ? 0 : 1;
}
