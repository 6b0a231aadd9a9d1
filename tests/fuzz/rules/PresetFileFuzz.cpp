// Preset files, read in every way, and what was read of them written and read again.
#include "fuzz/FuzzInput.h"
#include "presets/PresetReading.h"

namespace {

using support::kHall;
using support::Require;
using support::WithReader;

using Bytes = std::span<const std::byte>;

/// The plug-in's presets alone, as an export writes them; also the file that it is when it holds no others.
std::string Exported(Bytes file) {
    CMemorySink sink;
    CPresetFileWriter writer(sink, support::kLatin1);
    writer.WriteHeader(1);
    const auto place = writer.WritePlugin(kHall.clsid, kHall.category, 0, kHall.name);
    std::int32_t count = 0;
    WithReader(file, [&](CPresetFileReader& reader) {
        ImportFor(reader, kHall, nullptr, [&](std::size_t, const ImportedPreset& preset) {
            writer.WritePreset(preset.type, preset.name, preset.data);
            ++count;
            return true;
        });
    });
    writer.PatchCount(place, count);
    return sink.Bytes();
}

}  // namespace

void TryInput(std::string_view bytes) {
    const Bytes input = std::as_bytes(std::span(bytes));
    int kept = 0;
    std::size_t stored = 0;
    const auto keep = [&](std::size_t, const ImportedPreset& preset) {
        ++kept;
        stored += preset.data.size();
        Require(preset.name.find(L'\0') == std::wstring::npos && stored <= input.size());
        return !preset.data.empty();
    };
    WithReader(input, [&](CPresetFileReader& reader) {
        const int result = ImportFor(reader, kHall, nullptr, keep);
        Require(result >= kPresetIoFailure && (result <= 0 || result == kept));
    });
    support::ReadInAllWays(bytes);
    WithReader(input, [](CPresetFileReader& reader) {
        const PresetContents contents{.plugin = [](const PresetPlugin&, bool) {},
                                      .preset = [](const std::wstring&) {}};
        Require(WalkContents(reader, contents) <= 0);
    });
    const std::string exported = Exported(input);
    Require(Exported(std::as_bytes(std::span(exported))) == exported);
}
