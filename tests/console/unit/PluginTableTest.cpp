#include <gtest/gtest.h>

#include "PluginTable.h"

namespace {

PluginTableRow Odd() {
    return {.category = Category::Vst3Effects,
            .name = L"A \"b\",\n\\\x1F",
            .vendor = L"\x97F3",
            .clsid = L"{1}",
            .md5 = L"{2}",
            .vstId = -5,
            .file = L"C:\\x",
            .excluded = true,
            .permanent = false,
            .missing = false,
            .duplicateOf = L"{3}"};
}
PluginTableRow Plain() {
    PluginTableRow row;
    row.name = L"n";
    row.clsid = L"{4}";
    row.missing = true;
    return row;
}

TEST(PluginTable, QuotesWhatCsvAndJsonWouldMisread) {
    const PluginTableRow rows[] = {Odd(), Plain()};
    EXPECT_EQ(CsvOf(rows),
              L"category,name,vendor,clsid,md5,vstId,file,excluded,permanent,missing,duplicateOf\n"
              L"vst3,\"A \"\"b\"\",\n\\\x1F\",\x97F3,{1},{2},-5,C:\\x,true,false,false,{3}\n"
              L"dx,n,,{4},,,,false,false,true,\n");
    EXPECT_EQ(JsonOf(rows),
              L"[\n"
              L"  {\"category\": \"vst3\", \"name\": \"A \\\"b\\\",\\u000a\\\\\\u001f\", \"vendor\": "
              L"\"\x97F3\", \"clsid\": \"{1}\", \"md5\": \"{2}\", \"vstId\": -5, \"file\": \"C:\\\\x\", "
              L"\"excluded\": true, \"permanent\": false, \"missing\": false, \"duplicateOf\": \"{3}\"},\n"
              L"  {\"category\": \"dx\", \"name\": \"n\", \"vendor\": \"\", \"clsid\": \"{4}\", \"md5\": "
              L"null, \"vstId\": null, \"file\": \"\", \"excluded\": false, \"permanent\": false, "
              L"\"missing\": true, \"duplicateOf\": null}\n"
              L"]\n");
    EXPECT_EQ(JsonOf({}), L"[]\n");
}

TEST(PluginTable, IsAsWideAsItsContentsOrTheConsole) {
    const PluginTableRow rows[] = {Odd(), Plain()};
    const std::wstring whole = TableOf(rows, std::nullopt);
    EXPECT_TRUE(whole.starts_with(
        L"category  name       vendor  clsid  md5  vstId  file  excluded  permanent  missing  duplicateOf\n"
        L"vst3      A \"b\", \\   \x97F3      {1}    {2}  -5     C:\\x  true      false      false    {3}\n"))
        << testing::PrintToString(whole);
    EXPECT_EQ(TableOf(rows, 19), L"category  name     \nvst3      A \"b\", \\ \ndx        n        \n");
    EXPECT_EQ(TableOf(std::span(rows).first(1), 21).substr(22), L"vst3      A \"b\", \\   \n")
        << "half of a wide letter is none";
}

}  // namespace
