#include <gtest/gtest.h>

#include "PresetName.h"
#include "PresetWalk.h"
#include "PromptLayout.h"
#include "presets/MemoryStream.h"

namespace {

using support::Bytes;

const PresetPlugin kHall = {"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}"_guid,
                            "{B84F08B7-2DF0-438B-A5B4-E7700FE06A18}"_guid, L"Hall"};
const PresetPlugin kRoom = {"{11111111-2222-3333-4444-555555555555}"_guid,
                            "{EA928480-B8A3-43C0-8FA0-CCAD36569849}"_guid, L"Room"};

/// Files as another program would write them: field by field, right or wrong.
struct Maker {
    Maker& Raw(std::string_view text) {
        for (const char c : text) bytes.push_back(static_cast<std::byte>(c));
        return *this;
    }
    Maker& U16(unsigned v) { return Number(v, 2); }
    Maker& I32(std::int64_t v) { return Number(static_cast<std::uint64_t>(v), 4); }
    Maker& Number(std::uint64_t v, int size) {
        for (int i = 0; i < size; ++i) bytes.push_back(static_cast<std::byte>(v >> (8 * i) & 0xFF));
        return *this;
    }
    Maker& Id(const Guid& guid) {
        const auto raw = std::as_bytes(std::span(&guid, 1));
        bytes.insert(bytes.end(), raw.begin(), raw.end());
        return *this;
    }
    Maker& Text(std::string_view text) {
        return I32(static_cast<std::int64_t>(text.size()) + 1).Raw(text).Number(0, 1);
    }
    Maker& Utf16(std::u16string_view text) {
        I32(static_cast<std::int64_t>(text.size()));
        for (const char16_t c : text) U16(c);
        return *this;
    }
    Maker& Header(int plugins) { return Raw("PS").U16(1).I32(plugins); }
    Maker& Head(const PresetPlugin& plugin, int presets) {
        return Id(plugin.clsid).Id(plugin.category).I32(presets).Text("Name");
    }
    Maker& Preset(std::string_view name, std::string_view data, int type = 3) {
        return I32(type).Text(name).I32(static_cast<std::int64_t>(data.size())).Raw(data);
    }

    Bytes bytes;
};

struct Import {
    int result = 0;
    std::vector<std::string> kept;  // "index:type:name=data"
};

std::string Narrow(const std::wstring& text) { return {text.begin(), text.end()}; }

PresetKeeper KeepInto(Import& import) {
    return [&import](std::size_t index, const ImportedPreset& preset) {
        if (preset.data.empty()) return false;
        std::string line =
            std::to_string(index) + ":" + std::to_string(preset.type) + ":" + Narrow(preset.name) + "=";
        for (const std::byte b : preset.data) line += std::to_integer<char>(b);
        import.kept.push_back(line);
        return true;
    };
}

Import ImportOne(const Bytes& file, const PresetPlugin& plugin = kHall,
                 const PresetSelection* selection = nullptr) {
    const TextConversion text = support::Latin1();
    support::MemorySource source(file);
    CPresetFileReader reader(source, text);
    Import import;
    import.result = ImportFor(reader, plugin, selection, KeepInto(import));
    return import;
}

Import ImportBoth(const Bytes& file) {
    const TextConversion text = support::Latin1();
    support::MemorySource source(file);
    CPresetFileReader reader(source, text);
    const PresetPlugin plugins[] = {kHall, kRoom};
    Import import;
    import.result = ImportForSeveral(reader, plugins, KeepInto(import));
    return import;
}

std::string Preview(const Bytes& file, const PresetPlugin* plugin, int& result) {
    const TextConversion text = support::Latin1();
    support::MemorySource source(file);
    CPresetFileReader reader(source, text);
    std::string lines;
    PresetPreview preview{.add = {}, .notAPresetFile = L"no", .goesOn = L"more"};
    preview.add = [&](const std::wstring& line, std::int32_t position) {
        lines += Narrow(line) + "@" + std::to_string(position) + ";";
    };
    result = plugin ? ListForPlugin(reader, *plugin, preview) : ListContents(reader, preview);
    return lines;
}

Bytes TwoPlugins() {
    return Maker()
        .Header(2)
        .Head(kRoom, 1)
        .Preset("Small", "s")
        .Head(kHall, 2)
        .Preset("Big", "bb")
        .Preset("Wide", "w", 1)
        .bytes;
}

TEST(PresetFile, WritesTheBytesOfTheFormat) {
    const TextConversion text = support::Latin1();
    support::MemorySink sink;
    CPresetFileWriter writer(sink, text);
    writer.WriteHeader(1);
    const auto place = writer.WritePlugin(kHall.clsid, kHall.category, 7, L"Hall");
    const Bytes data = Maker().Raw("data").bytes;
    writer.WritePreset(kPresetInRegistry, L"", data);
    writer.WritePreset(kPresetInFile, L"\u00E4\u4E00", {});
    writer.PatchCount(place, 2);
    const Bytes expected = Maker()
                               .Raw("PS")
                               .U16(1)
                               .I32(1)
                               .Raw("\x3D\x2C\x1B\x0A\x5F\x4E\x71\x60\x82\x93\xA4\xB5\xC6\xD7\xE8\xF9")
                               .Raw("\xB7\x08\x4F\xB8\xF0\x2D\x8B\x43\xA5\xB4\xE7\x70\x0F\xE0\x6A\x18")
                               .I32(2)
                               .Text("Hall")
                               .I32(3)
                               .Text("")
                               .I32(4)
                               .Raw("data")
                               .I32(1)
                               .Text("\xE4?")
                               .I32(0)
                               .bytes;
    EXPECT_EQ(sink.m_bytes, expected);
}

TEST(PresetFile, LongNamesAreCutAtWholeCharacters) {
    TextConversion threeBytes = support::Latin1();
    threeBytes.toAnsi = [](std::wstring_view text) { return std::string(text.size() * 3, 'x'); };
    const struct {
        const TextConversion text;
        std::size_t characters;
        int length;  // as written, terminator counted
    } cases[] = {
        {support::Latin1(), 4094, 4095},
        {support::Latin1(), 4095, 4095},
        {support::Latin1(), 9000, 4095},
        {threeBytes, 3, 10},
        {threeBytes, 10, 22},
        {threeBytes, 3000, 4093},
    };
    for (const auto& c : cases) {
        support::MemorySink sink;
        CPresetFileWriter(sink, c.text).WritePreset(3, std::wstring(c.characters, L'n'), {});
        EXPECT_EQ(sink.m_bytes.size(), static_cast<std::size_t>(12 + c.length)) << c.characters;
        EXPECT_EQ(sink.m_bytes.at(4), static_cast<std::byte>(c.length & 0xFF));
        EXPECT_EQ(sink.m_bytes.at(sink.m_bytes.size() - 5), std::byte{0});
    }
}

TEST(PresetFile, Headers) {
    const Bytes version0 =
        Maker().Raw("PS").U16(0).Id(kHall.clsid).I32(1).Text("Name").Preset("Old", "o").bytes;
    EXPECT_EQ(ImportOne(version0).kept, std::vector<std::string>{"0:3:Old=o"});
    EXPECT_EQ(ImportBoth(version0).result, kNothingForPlugin) << "a record without a category is nobody's";
    const Bytes later = Maker().Raw("PS").U16(0xFFFF).I32(1).Head(kHall, 1).Preset("New", "n").bytes;
    EXPECT_EQ(ImportOne(later).result, 1) << "every version but 0 reads alike";

    for (const Bytes& none :
         {Bytes{}, Maker().Raw("P").bytes, Maker().Raw("SP").U16(1).I32(1).bytes, Maker().Raw("PS").bytes,
          Maker().Raw("PS").U16(1).Raw("abc").bytes, Maker().Header(0).bytes, Maker().Header(-1).bytes}) {
        EXPECT_EQ(ImportOne(none).result, kNotAPresetFile) << none.size();
        EXPECT_EQ(ImportBoth(none).result, kNotAPresetFile) << none.size();
        for (const PresetPlugin* plugin : {&kHall, static_cast<const PresetPlugin*>(nullptr)}) {
            int result = 0;
            EXPECT_EQ(Preview(none, plugin, result), "");
            EXPECT_EQ(result, kNotAPresetFile);
        }
    }
}

TEST(PresetFile, BothFormsOfText) {
    const auto nameOf = [](Maker name) {
        Bytes file = Maker().Header(1).Head(kHall, 1).I32(3).bytes;
        file.insert(file.end(), name.bytes.begin(), name.bytes.end());
        const Bytes rest = Maker().I32(1).Raw("d").bytes;
        file.insert(file.end(), rest.begin(), rest.end());
        const Import import = ImportOne(file);
        return import.result == 1 ? import.kept.at(0).substr(4) : "failed";
    };
    EXPECT_EQ(nameOf(Maker().I32(0)), "=d");
    EXPECT_EQ(nameOf(Maker().I32(1).Raw("A")), "A=d");
    EXPECT_EQ(nameOf(Maker().I32(2).Raw("AB")), "AB=d");
    EXPECT_EQ(nameOf(Maker().Text("A")), "A=d") << "two bytes, the second a zero: still one byte a character";
    EXPECT_EQ(nameOf(Maker().I32(3).Raw("ABC")), "ABC=d") << "without a terminator";
    EXPECT_EQ(nameOf(Maker().Utf16(u"Wide name")), "Wide name=d");
    EXPECT_EQ(nameOf(Maker().Utf16({u"ABC\0xyz", 7})), "ABC=d") << "a zero ends the text";
    EXPECT_EQ(nameOf(Maker().I32(7).Raw({"ABC\0xyz", 7})), "ABC=d");
    EXPECT_EQ(nameOf(Maker().I32(3).Raw({"A\0\x00\xD8"
                                         "C\0",
                                         6}))
                  .substr(0, 1),
              "A")
        << "half a surrogate pair";
    EXPECT_EQ(nameOf(Maker().Text(std::string(5000, 'n'))).size(), 5002U);
    EXPECT_EQ(nameOf(Maker().Text(std::string(70000, 'n'))).size(), 65538U)
        << "what nothing can hold is dropped";
    EXPECT_EQ(nameOf(Maker().Utf16(std::u16string(70000, u'n'))).size(), 65538U);
}

TEST(PresetFile, ImportsWhatIsAskedFor) {
    const std::vector<std::string> hall = {"0:3:Big=bb", "0:1:Wide=w"};
    EXPECT_EQ(ImportOne(TwoPlugins()).result, 2);
    EXPECT_EQ(ImportOne(TwoPlugins()).kept, hall);
    const PresetSelection second = {0, 5}, first = {1}, none = {0, 0};
    EXPECT_EQ(ImportOne(TwoPlugins(), kHall, &second).kept, std::vector<std::string>{hall[1]});
    EXPECT_EQ(ImportOne(TwoPlugins(), kHall, &first).kept, std::vector<std::string>{hall[0]});
    EXPECT_EQ(ImportOne(TwoPlugins(), kHall, &none).result, kNothingForPlugin);
    const PresetPlugin otherCategory = {kHall.clsid, kRoom.category, L""};
    EXPECT_EQ(ImportOne(TwoPlugins(), otherCategory).result, kNothingForPlugin);
    EXPECT_EQ(ImportBoth(TwoPlugins()).kept,
              (std::vector<std::string>{"1:3:Small=s", "0:3:Big=bb", "0:1:Wide=w"}));

    const Bytes empty = Maker().Header(1).Head(kHall, 0).bytes;
    EXPECT_EQ(ImportOne(empty).result, kNothingForPlugin);
    EXPECT_EQ(ImportBoth(empty).result, 0) << "found, but with nothing in it";
    const Bytes repeated =
        Maker().Header(2).Head(kHall, 1).Preset("One", "1").Head(kHall, 1).Preset("One", "2").bytes;
    EXPECT_EQ(ImportOne(repeated).kept, (std::vector<std::string>{"0:3:One=1", "0:3:One=2"}));
    const Bytes withoutData =
        Maker().Header(1).Head(kHall, 3).Preset("One", "1").Preset("Two", "").Preset("Three", "3").bytes;
    EXPECT_EQ(ImportOne(withoutData).result, kPresetIoFailure);
    EXPECT_EQ(ImportOne(withoutData).kept, std::vector<std::string>{"0:3:One=1"}) << "what was kept stays";
}

TEST(PresetFile, Previews) {
    int result = 0;
    EXPECT_EQ(Preview(TwoPlugins(), &kHall, result), "Big@0;Wide@1;");
    EXPECT_EQ(result, 2);
    EXPECT_EQ(Preview(Maker().Header(1).Head(kRoom, 1).Preset("Small", "s").bytes, &kHall, result), "");
    EXPECT_EQ(result, kNothingForPlugin);
    EXPECT_EQ(Preview(TwoPlugins(), nullptr, result), "<<Name>>@-1;Small@0;<<Name>>@-1;Big@0;Wide@1;");
    EXPECT_EQ(
        Preview(Maker().Header(2).Head(kRoom, 0).Head(kHall, 1).Preset("Big", "b").bytes, nullptr, result),
        "<<Name>>@-1;<<Name>>@-1;Big@0;");
    EXPECT_EQ(Preview(Maker().Header(9).Head(kRoom, 1).Preset("Small", "s").bytes, nullptr, result),
              "<<Name>>@-1;Small@0;");
    EXPECT_EQ(result, kPresetIoFailure);
}

TEST(PresetFile, AFileThatEndsTooEarlyGivesWhatCameBefore) {
    const Bytes whole = TwoPlugins();
    const Bytes firstOnly =
        Maker().Header(2).Head(kRoom, 1).Preset("Small", "s").Head(kHall, 2).Preset("Big", "bb").bytes;
    for (std::size_t size = 8; size < whole.size(); ++size) {
        const Import import =
            ImportOne(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
        EXPECT_EQ(import.result, kPresetIoFailure) << size;
        EXPECT_EQ(import.kept.size(), size < firstOnly.size() ? 0U : 1U) << size;
    }
}

TEST(PresetFile, NoLengthIsBelieved) {
    const Bytes head = Maker().Header(1).Head(kHall, 1).bytes;
    // Each field that holds a length or a count, with everything around it right.
    const auto fails = [](const Maker& file) {
        return ImportOne(file.bytes).result == kPresetIoFailure && ImportOne(file.bytes).kept.empty();
    };
    for (const std::int64_t length :
         {std::int64_t{-1}, std::int64_t{INT32_MIN}, std::int64_t{INT32_MAX}, std::int64_t{11}}) {
        EXPECT_TRUE(fails(
            Maker(Maker().Header(1)).Id(kHall.clsid).Id(kHall.category).I32(1).I32(length).Raw("0123456789")))
            << length;
        EXPECT_TRUE(fails(Maker{head}.I32(3).I32(length).Raw("0123456789"))) << length;
        EXPECT_TRUE(fails(Maker{head}.I32(3).Text("Name").I32(length).Raw("0123456789"))) << length;
    }
    EXPECT_TRUE(fails(Maker{head}.I32(3).I32(6).Raw({"A\0B\0C\0D\0E\0", 10})))
        << "characters are two bytes here";
    EXPECT_EQ(ImportOne(Maker{head}.I32(3).Text("Name").I32(9).Raw("0123456789").bytes).result, 1)
        << "bytes may be left over";
    for (const int presets : {INT32_MAX, 2}) {
        const Import import = ImportOne(Maker().Header(1).Head(kHall, presets).Preset("One", "1").bytes);
        EXPECT_EQ(import.result, kPresetIoFailure);
        EXPECT_EQ(import.kept.size(), 1U);
    }
    EXPECT_EQ(ImportOne(Maker().Header(1).Head(kHall, -1).Preset("One", "1").bytes).result,
              kNothingForPlugin);
    EXPECT_EQ(ImportOne(Maker().Header(INT32_MAX).Head(kHall, 1).Preset("One", "1").bytes).result,
              kPresetIoFailure);
}

TEST(PresetFile, APreviewOfAWholeFileEndsSomewhere) {
    const auto previewOf = [](std::initializer_list<int> records) {
        Maker file = Maker().Header(static_cast<int>(records.size()));
        for (const int presets : records) {
            file.Head(kRoom, presets);
            for (int i = 0; i < presets; ++i) file.Preset("", "");
        }
        int result = 0;
        const std::string lines = Preview(file.bytes, nullptr, result);
        return std::to_string(std::ranges::count(lines, ';')) +
               lines.substr(lines.rfind(';', lines.size() - 2));
    };
    EXPECT_EQ(previewOf({kMostContents - 1}), "100000;@99998;") << "just fits";
    EXPECT_EQ(previewOf({kMostContents}), "100001;more@-1;");
    EXPECT_EQ(previewOf({5, kMostContents - 7}), "100000;@99992;");
    EXPECT_EQ(previewOf({5, kMostContents - 7, 1}), "100001;more@-1;");
}

TEST(PresetName, OnlyPlainNamesBecomeFiles) {
    for (const wchar_t* plain : {L"Hall", L"Big Hall 2", L" leading", L"v1.2", L".hidden", L"COMB", L"COM10",
                                 L"console", L"nul-l", L"\u4E00\u00E9", L"100% wet; (dry)"})
        EXPECT_EQ(PresetFileName(plain), plain) << Narrow(plain);
    for (const wchar_t* shortened : {L"Wide.", L"Wide ", L"Wide...", L"Wide . ."})
        EXPECT_EQ(PresetFileName(shortened), L"Wide");
    for (const wchar_t* other :
         {L"",       L".",    L"..",    L"..\\x",   L"C:\\x",    L"C:",     L"\\\\server\\x",
          L"a/b",    L"a:b",  L"CON",   L"nul.txt", L"aux .x",   L"com1",   L"LPT\u00B2.a.b",
          L"conin$", L"nul.", L"COM1 ", L"... ",    L"tab\tbed", L"line\n", L"\x01",
          L"what?",  L"a*",   L"\"x\"", L"<x>",     L"a|b"})
        EXPECT_FALSE(PresetFileName(other)) << Narrow(other);
    EXPECT_TRUE(PresetFileName(std::wstring(255, L'n')));
    EXPECT_FALSE(PresetFileName(std::wstring(256, L'n')));
}

TEST(PromptLayout, WidthsFollowTheTexts) {
    PromptMeasures m{.labelTextWidth = 90,
                     .valueLength = 0,
                     .averageCharacter = 6,
                     .lineHeight = 5,
                     .label = {10, 15, 70, 28},
                     .value = {70, 11, 160, 32},
                     .ok = {170, 11, 245, 32},
                     .cancel = {250, 11, 325, 32},
                     .widest = 900};
    const PromptPlaces empty = PlacePrompt(m);
    EXPECT_EQ(empty.label, (Rect{10, 15, 106, 23})) << "a line is at least 8 high";
    EXPECT_EQ(empty.value, (Rect{106, 11, 106 + 14 * 6, 32}));
    EXPECT_EQ(empty.cancel.right + 10, empty.clientWidth);
    m.valueLength = 20;
    EXPECT_EQ(PlacePrompt(m).value.Width(), 32 * 6);
    m.valueLength = 5000;
    EXPECT_EQ(PlacePrompt(m).clientWidth, 900) << "the buttons stay on the screen";
}

}  // namespace
