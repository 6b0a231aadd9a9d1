// The words to find: a line with a text, and one with what is looked for in it.
#include "WordMatch.h"
#include "fuzz/FuzzInput.h"

using support::Require;

void TryInput(std::string_view bytes) {
    const auto lines = support::LinesOf(bytes, 2);
    const std::wstring& text = lines[0];
    const auto words = WordsOf(lines[1]);
    Require(std::ranges::is_sorted(words) && std::ranges::adjacent_find(words) == words.end());
    std::wstring backwards;
    for (const std::wstring& word : words) {
        Require(WordsOf(word) == std::vector{word});
        backwards.insert(0, L"\x3000" + word + L' ');
    }
    Require(WordsOf(backwards) == words);
    Require(MatchesWords(lines[1], words) && MatchesWords(text, WordsOf(text)));
    // More text finds more, more words find less.
    if (MatchesWords(text, words)) Require(MatchesWords(L"a" + text + L"b", words));
    if (MatchesWords(text, WordsOf(lines[1] + L" x"))) Require(MatchesWords(text, words));
}
