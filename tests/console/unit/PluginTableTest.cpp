#include <gtest/gtest.h>

#include "PluginTable.h"

namespace {

// In the order of the columns.
const PluginTableRow kRows[] = {
    {Category::Vst3Effects, L"A \"b\",\n\\\x1F", L"\x97F3", L"{1}", L"{2}", -5, L"C:\\x", true, false, false,
     L"{3}"},
    {Category::DirectXEffects, L"n", L"", L"{4}", L"", {}, L"", false, false, true, L""}};

TEST(PluginTable, QuotesWhatCsvAndJsonWouldMisread) {
    EXPECT_EQ(CsvOf(kRows),
              L"category,name,vendor,clsid,md5,vstId,file,excluded,permanent,missing,duplicateOf\n"
              L"vst3,\"A \"\"b\"\",\n\\\x1F\",\x97F3,{1},{2},-5,C:\\x,true,false,false,{3}\n"
              L"dx,n,,{4},,,,false,false,true,\n");
    EXPECT_EQ(JsonOf(kRows),
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
    const std::wstring whole = TableOf(kRows, std::nullopt);
    EXPECT_TRUE(whole.starts_with(
        L"category  name       vendor  clsid  md5  vstId  file  excluded  permanent  missing  duplicateOf\n"
        L"vst3      A \"b\", \\   \x97F3      {1}    {2}  -5     C:\\x  true      false      false    {3}\n"))
        << testing::PrintToString(whole);
    EXPECT_EQ(TableOf(kRows, 19), L"category  name     \nvst3      A \"b\", \\ \ndx        n        \n");
    EXPECT_EQ(TableOf(std::span(kRows).first(1), 21).substr(22), L"vst3      A \"b\", \\   \n")
        << "half of a wide letter is none";
}

}  // namespace
