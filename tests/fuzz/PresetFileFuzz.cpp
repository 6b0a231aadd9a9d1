// Feeds arbitrary bytes to everything that reads preset files.
#include <cstdlib>

#include "PresetName.h"
#include "presets/PresetReading.h"

namespace {

using support::kHall;
using support::WithReader;

void Require(bool holds) {
    if (!holds) std::abort();
}

/// No result may be anything but a code or a count of what was really visited, which begins anew. By
/// reference, because the call that counts stands in the first argument.
void CheckResult(int result, int& visited) {
    Require(result >= kPresetIoFailure && (result <= 0 || result == visited));
    visited = 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto input = std::as_bytes(std::span(data, size));
    int visited = 0;
    std::size_t stored = 0;
    const auto keep = [&](std::size_t, const ImportedPreset& preset) {
        ++visited;
        stored += preset.data.size();
        Require(preset.name.find(L'\0') == std::wstring::npos);
        if (const auto file = PresetFileName(preset.name))
            Require(file->find_first_of(L"\\/:") == std::wstring::npos && !file->ends_with(L'.'));
        return !preset.data.empty();
    };
    PresetPreview preview{.add = {}, .notAPresetFile = L"no", .goesOn = L"more"};
    preview.add = [&](const std::wstring& line, std::int32_t) { visited += line.starts_with(L"<<") ? 0 : 1; };

    WithReader(input, [&](CPresetFileReader& reader) {
        CheckResult(ImportFor(reader, kHall, nullptr, keep), visited);
        Require(stored <= size);
    });
    WithReader(input, [&](CPresetFileReader& reader) {
        const PresetPlugin plugins[] = {kHall, {}};
        CheckResult(ImportForSeveral(reader, plugins, keep), visited);
    });
    WithReader(input, [&](CPresetFileReader& reader) {
        CheckResult(ListForPlugin(reader, kHall, preview), visited);
        Require(reader.Position() <= size);
    });
    WithReader(input, [&](CPresetFileReader& reader) {
        Require(ListContents(reader, preview) >= kPresetIoFailure);
    });
    WithReader(input, [&](CPresetFileReader& reader) {
        const PresetContents contents{
            .plugin = [](const PresetPlugin&, bool) {},
            .preset = [&](const std::wstring&) { Require(reader.Position() <= size); }};
        Require(WalkContents(reader, contents) <= 0);
    });
    return 0;
}
