#include <gtest/gtest.h>

#include "WordMatch.h"

namespace {

TEST(WordMatch, EveryWordOccursAndNoCharacterButABlankIsSpecial) {
    const std::wstring text = L"FAT \"DRIVE\" 100%*\nTARNWICK\nDRIVE[2].DLL\n\xD83C\xDFB9";
    const struct {
        const wchar_t* words;
        bool found;
    } cases[] = {
        {L"", true},
        {L" \t\x00A0\x3000", true},
        {L"TARN DRI FAT", true},
        {L"FAT REVERB", false},
        {L"\"DRIVE\"", true},
        {L"\"FAT DRIVE\"", false},
        {L"*", true},
        {L"F*T", false},
        {L"DRIVE[2].", true},
        {L"DRIVE.2", false},
        {L"100% *", true},
        {L"?", false},
        {L"TARNWICKD", false},
        {L"\xD83C\xDFB9", true},
        {L"\xD83C", true},
        {L"\xD83D", false},
    };
    for (const auto& [words, found] : cases) EXPECT_EQ(MatchesWords(text, WordsOf(words)), found) << words;
    EXPECT_EQ(WordsOf(L" B\x3000"
                      L"A B "),
              (std::vector<std::wstring>{L"A", L"B"}))
        << "the same question";
}

}  // namespace
