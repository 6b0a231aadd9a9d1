// Preset files, read in every way, and what was read of them written and read again.
#include "fuzz/FuzzInput.h"
#include "presets/PresetReading.h"

namespace {

using support::kHall;
using support::Require;
using support::WithReader;

/// No result may be anything but a code or a count of what was really visited, which begins anew. By
/// reference, because the call that counts stands in the first argument.
void CheckResult(int result, int& visited) {
    Require(result >= kPresetIoFailure && (result <= 0 || result == visited));
    visited = 0;
}

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
    const std::size_t size = bytes.size();
    int visited = 0;
    std::size_t stored = 0;
    const auto keep = [&](std::size_t, const ImportedPreset& preset) {
        ++visited;
        stored += preset.data.size();
        Require(preset.name.find(L'\0') == std::wstring::npos);
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
    const std::string exported = Exported(input);
    Require(Exported(std::as_bytes(std::span(exported))) == exported);
}
