#include <gtest/gtest.h>

#include "PresetName.h"
#include "presets/PresetReading.h"

namespace {

using namespace std::string_literals;
using support::ImportOne;
using support::kHall;
using support::kRoom;

// Files as another program would write them: field by field, right or wrong.

std::string Number(std::int64_t value, int size = 4) {
    std::string bytes;
    for (; size > 0; --size, value >>= 8) bytes += static_cast<char>(value & 0xFF);
    return bytes;
}
std::string Sized(const std::string& bytes) { return Number(std::ssize(bytes)) + bytes; }
std::string Id(const Guid& guid) { return {reinterpret_cast<const char*>(&guid), sizeof guid}; }
std::string Header(int plugins) { return "PS" + Number(1, 2) + Number(plugins); }
std::string Head(const PresetPlugin& plugin, int presets) {
    return Id(plugin.clsid) + Id(plugin.category) + Number(presets) + Sized("Name\0"s);
}
std::string Preset(const std::string& name, const std::string& data, int type = 3) {
    return Number(type) + Sized(name + '\0') + Sized(data);
}

TEST(PresetFile, WritesTheBytesOfTheFormat) {
    CMemorySink sink;
    CPresetFileWriter writer(sink, support::kLatin1);
    writer.WriteHeader(1);
    const auto place = writer.WritePlugin(kHall.clsid, kHall.category, 7, L"Hall");
    writer.PatchCount(place, 2);
    writer.WritePreset(kPresetInRegistry, L"", std::as_bytes(std::span("data", 4)));
    writer.WritePreset(kPresetInFile, L"\u00E4\u4E00", {});
    EXPECT_EQ(sink.Bytes(),
              "PS\1\0\1\0\0\0"
              "\x3D\x2C\x1B\x0A\x5F\x4E\x71\x60\x82\x93\xA4\xB5\xC6\xD7\xE8\xF9"
              "\xB7\x08\x4F\xB8\xF0\x2D\x8B\x43\xA5\xB4\xE7\x70\x0F\xE0\x6A\x18"
              "\2\0\0\0\5\0\0\0Hall\0"
              "\3\0\0\0\1\0\0\0\0\4\0\0\0data"
              "\1\0\0\0\3\0\0\0\xE4?\0\0\0\0\0"s);
}

TEST(PresetFile, LongNamesAreCutAtWholeCharacters) {
    TextConversion threeBytes = support::kLatin1;
    threeBytes.toAnsi = [](std::wstring_view text) { return std::string(text.size() * 3, 'x'); };
    const auto expect = [](const TextConversion& text, std::size_t characters, std::size_t written) {
        CMemorySink sink;
        CPresetFileWriter(sink, text).WritePreset(3, std::wstring(characters, L'x'), {});
        EXPECT_EQ(sink.Bytes(), Preset(std::string(written, 'x'), "")) << characters;
    };
    expect(support::kLatin1, 4094, 4094);
    expect(support::kLatin1, 4095, 4094);
    expect(threeBytes, 3, 9);
    expect(threeBytes, 10, 21);
    expect(threeBytes, 2500, 4092);
}

TEST(PresetFile, WithoutAWholeHeaderItIsNone) {
    for (const std::string& file : {""s, "P"s, "SP\1\0\1\0\0\0"s, "PS"s, "PS\1\0abc"s, Header(0), Header(-1)})
        EXPECT_EQ(
            support::ReadInAllWays(file),
            "import no preset file\nboth   no preset file\nlist   no preset file\nall    no preset file\n");
}

TEST(PresetFile, ImportsWhatIsSelected) {
    const std::string file = Header(2) + Head(kRoom, 1) + Preset("Small", "s") + Head(kHall, 2) +
                             Preset("Big", "bb") + Preset("Wide", "w", 1);
    const std::pair<PresetSelection, const char*> cases[] = {
        {{0, 5}, "1 0:1:Wide=w"}, {{1}, "1 0:3:Big=bb"}, {{0, 0}, "nothing"}};
    for (const auto& [selection, kept] : cases) EXPECT_EQ(ImportOne(file, &selection), kept);
}

TEST(PresetFile, AFileThatEndsTooEarlyGivesWhatCameBefore) {
    const std::string one =
        Header(2) + Head(kRoom, 1) + Preset("Small", "s") + Head(kHall, 2) + Preset("Big", "b");
    const std::string whole = one + Preset("Wide", "w", 1);
    for (std::size_t size = 8; size < whole.size(); ++size)
        EXPECT_EQ(ImportOne(whole.substr(0, size)), size < one.size() ? "failed" : "failed 0:3:Big=b")
            << size;
}

TEST(PresetFile, NoLengthIsBelieved) {
    // Each field that holds a length or a count, with everything around it right.
    const std::string head = Header(1) + Head(kHall, 1);
    for (const int length : {-1, INT32_MIN, INT32_MAX, 11}) {
        for (std::string file : {Header(1) + Id(kHall.clsid) + Id(kHall.category) + Number(1),
                                 head + Number(3), head + Number(3) + Sized("Name\0"s)}) {
            file += Number(length) + "0123456789";
            EXPECT_EQ(ImportOne(file), "failed") << length;
        }
    }
    EXPECT_EQ(ImportOne(head + Number(3) + Number(6) + "A\0B\0C\0D\0E\0"s), "failed")
        << "characters are two bytes here";
    EXPECT_EQ(ImportOne(Header(INT32_MAX) + Head(kHall, 1) + Preset("One", "1")), "failed 0:3:One=1");
}

TEST(PresetFile, WhatNothingCanHoldOfATextIsDropped) {
    constexpr int kLength = 70000;
    const std::string head = Header(1) + Head(kHall, 1);
    const std::string expected = "1 0:3:" + std::string(0x10000, 'n') + "=d";
    EXPECT_EQ(ImportOne(head + Preset(std::string(kLength, 'n'), "d")), expected);
    std::string utf16 = head + Number(3) + Number(kLength);
    for (int i = 0; i < kLength; ++i) utf16 += "n\0"s;
    EXPECT_EQ(ImportOne(utf16 + Sized("d")), expected);
}

TEST(PresetFile, APreviewOfAWholeFileEndsSomewhere) {
    const auto endOf = [](std::initializer_list<int> records) {
        const std::string preset = Preset("", "");
        std::string file = Header(static_cast<int>(records.size()));
        for (const int presets : records) {
            file += Head(kRoom, presets);
            for (int i = 0; i < presets; ++i) file += preset;
        }
        const std::string lines = support::ListAll(file);
        return std::to_string(std::ranges::count(lines, ' ')) + lines.substr(lines.rfind(' '));
    };
    EXPECT_EQ(endOf({kMostContents - 1}), "100000 @99998") << "just fits";
    EXPECT_EQ(endOf({kMostContents}), "100001 more");
    EXPECT_EQ(endOf({5, kMostContents - 7, 1}), "100001 more");
}

TEST(PresetName, OnlyPlainNamesBecomeFiles) {
    for (const wchar_t* plain : {L" leading", L"v1.2", L".hidden", L"COMB", L"COM10", L"console", L"nul-l",
                                 L"\u4E00\u00E9", L"100% wet; (dry)"})
        EXPECT_EQ(PresetFileName(plain), plain) << testing::PrintToString(plain);
    for (const wchar_t* shortened : {L"Wide.", L"Wide ", L"Wide...", L"Wide . ."})
        EXPECT_EQ(PresetFileName(shortened), L"Wide");
    for (const wchar_t* other :
         {L"", L"..", L"... ", L"..\\x", L"a/b", L"a:b", L"CON", L"nul.txt", L"aux .x", L"com1",
          L"LPT\u00B2.a.b", L"conin$", L"COM1 ", L"line\n", L"what?", L"a*", L"\"x\"", L"<x>", L"a|b"})
        EXPECT_FALSE(PresetFileName(other)) << testing::PrintToString(other);
    EXPECT_TRUE(PresetFileName(std::wstring(255, L'n')));
    EXPECT_FALSE(PresetFileName(std::wstring(256, L'n')));
}

}  // namespace
