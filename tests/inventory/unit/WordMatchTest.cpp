#include <gtest/gtest.h>

#include "WordMatch.h"

namespace {

TEST(WordMatch, EveryWordOccursAndNoCharacterButABlankIsSpecial) {
    const auto isFound = [](const wchar_t* words) {
        constexpr wchar_t kText[] = L"FAT \"DRIVE\" 100%*\nTARNWICK\nDRIVE[2].DLL\n\xD83C\xDFB9";
        return MatchesWords(kText, WordsOf(words));
    };
    for (const wchar_t* words : {L"", L" \t\x00A0\x3000", L"TARN DRI FAT", L"\"DRIVE\"", L"*", L"DRIVE[2].",
                                 L"\xD83C\xDFB9", L"\xD83C"})
        EXPECT_TRUE(isFound(words)) << words;
    for (const wchar_t* words : {L"FAT REVERB", L"\"FAT DRIVE\"", L"F*T", L"DRIVE.2", L"?", L"\xD83D"})
        EXPECT_FALSE(isFound(words)) << words;
    EXPECT_EQ(WordsOf(L" B\x3000"
                      L"A B "),
              (std::vector<std::wstring>{L"A", L"B"}))
        << "the same question";
}

}  // namespace
