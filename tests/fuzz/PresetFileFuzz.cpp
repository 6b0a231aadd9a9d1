// Feeds arbitrary bytes to everything that reads preset files.
#include <cstdlib>

#include "PresetName.h"
#include "PresetWalk.h"
#include "presets/MemoryStream.h"

namespace {

// The plug-in of the corpus; most inputs keep it.
const PresetPlugin kPlugin = {"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}"_guid,
                              "{B84F08B7-2DF0-438B-A5B4-E7700FE06A18}"_guid, L"Hall"};

void Require(bool holds) {
    if (!holds) std::abort();
}

/// No result may be anything but a code or a count of what was really visited. By reference, because the
/// call that counts stands in the first argument.
void CheckResult(int result, const int& visited) {
    Require(result >= kPresetIoFailure);
    if (result > 0) Require(result == visited);
}

template <typename TWork>
void WithReader(std::span<const std::byte> input, TWork&& work) {
    static const TextConversion text = support::Latin1();
    support::MemorySource source(input);
    CPresetFileReader reader(source, text);
    work(reader);
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
        CheckResult(ImportFor(reader, kPlugin, nullptr, keep), visited);
        Require(stored <= size);
    });
    visited = 0;
    WithReader(input, [&](CPresetFileReader& reader) {
        const PresetPlugin plugins[] = {kPlugin, {}};
        CheckResult(ImportForSeveral(reader, plugins, keep), visited);
    });
    visited = 0;
    WithReader(input, [&](CPresetFileReader& reader) {
        CheckResult(ListForPlugin(reader, kPlugin, preview), visited);
        Require(reader.Position() <= size);
    });
    WithReader(input, [&](CPresetFileReader& reader) {
        Require(ListContents(reader, preview) >= kPresetIoFailure);
    });
    return 0;
}
