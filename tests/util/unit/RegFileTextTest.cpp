#include <gtest/gtest.h>

#include "RegFileText.h"

namespace {

std::vector<std::byte> Bytes(std::initializer_list<unsigned> values) {
    std::vector<std::byte> bytes;
    for (const unsigned value : values) bytes.push_back(static_cast<std::byte>(value));
    return bytes;
}

TEST(RegFileText, EveryValueIsWrittenAsTheSystemsEditorDoesAndReadBackToTheByte) {
    RegFileKey key{L"HKEY_CURRENT_USER\\A]B", false, {}};
    key.values = {{L"", false, 1, Bytes({'a', 0, 0, 0})},
                  {L"q\"\\", false, 1, Bytes({'"', 0, '\\', 0, 0x42, 0x30, 0, 0})},
                  {L"open", false, 1, Bytes({'a', 0})},
                  {L"lines", false, 1, Bytes({'a', 0, '\n', 0, 0, 0})},
                  {L"two", false, 1, Bytes({'a', 0, 0, 0, 'b', 0, 0, 0})},
                  {L"odd", false, 1, Bytes({'a', 0, 0})},
                  {L"none", false, 1, {}},
                  {L"number", false, 4, Bytes({0x78, 0x56, 0x34, 0xF2})},
                  {L"short", false, 4, Bytes({1})},
                  {L"binary", false, 3, std::vector<std::byte>(60, std::byte{0xAB})},
                  {L"strange", false, 0xFFFF0012, Bytes({0})},
                  {L"gone", true, 0, {}}};
    std::wstring text(RegFileHeader());
    AppendRegKey(text, L"HKEY_CURRENT_USER\\A]B", true);
    AppendRegKey(text, key);
    const std::wstring full = L"ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,";
    EXPECT_EQ(text,
              L"\xFEFFWindows Registry Editor Version 5.00\r\n\r\n[-HKEY_CURRENT_USER\\A]B]\r\n"
              L"\r\n[HKEY_CURRENT_USER\\A]B]\r\n@=\"a\"\r\n\"q\\\"\\\\\"=\"\\\"\\\\\x3042\"\r\n"
              L"\"open\"=hex(1):61,00\r\n\"lines\"=hex(1):61,00,0a,00,00,00\r\n"
              L"\"two\"=hex(1):61,00,00,00,62,00,00,00\r\n\"odd\"=hex(1):61,00,00\r\n\"none\"=hex(1):\r\n"
              L"\"number\"=dword:f2345678\r\n\"short\"=hex(4):01\r\n\"binary\"=hex:" +
                  full + L"\\\r\n  " + full + L"ab,ab,ab,\\\r\n  ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab\r\n" +
                  L"\"strange\"=hex(ffff0012):00\r\n\"gone\"=-\r\n");
    const auto read = ParseRegFile(text);
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, (std::vector{RegFileKey{key.path, true, {}}, key}));
}

TEST(RegFileText, AnyOtherTextIsRefused) {
    const std::wstring header(RegFileHeader());
    for (const wchar_t* text :
         {L"[K]\r\n", L"\r\n[K]\n", L"\r\n [K]\r\n", L"\r\n[K]\r\n;a\r\n", L"\r\n[K\n[HKEY]\r\n",
          L"\r\n[K]\r\n\"a\"=dword:1\r\n", L"\r\n[K]\r\n\"a\"=hex:0\r\n", L"\r\n[K]\r\n\"a\"=hex:01,\r\n",
          L"\r\n[K]\r\n\"a\"=\"\\n\"\r\n", L"\r\n[K]\r\n\"a\"=\"x\n[HKEY]\"\r\n",
          L"\r\n[K]\r\n\"a\"=hex:AB\r\n", L"\r\n[K]\r\n\"a\"=\"b", L"\r\n[K]\r\n\"a\"", L"@=-\r\n", L"\r\n"})
        EXPECT_FALSE(ParseRegFile(header + text)) << testing::PrintToString(std::wstring(text));
    EXPECT_FALSE(ParseRegFile(L"REGEDIT4\r\n"));
    EXPECT_TRUE(ParseRegFile(header));
}

}  // namespace
