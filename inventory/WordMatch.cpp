#include "WordMatch.h"

#include <algorithm>

namespace {

constexpr std::wstring_view kBlanks = L" \t\r\n\x00A0\x3000";

}  // namespace

std::vector<std::wstring> WordsOf(std::wstring_view text) {
    std::vector<std::wstring> words;
    for (std::size_t start = text.find_first_not_of(kBlanks); start != std::wstring_view::npos;) {
        const std::size_t end = std::min(text.find_first_of(kBlanks, start), text.size());
        words.emplace_back(text.substr(start, end - start));
        start = text.find_first_not_of(kBlanks, end);
    }
    std::ranges::sort(words);
    words.erase(std::unique(words.begin(), words.end()), words.end());
    return words;
}

bool MatchesWords(std::wstring_view text, std::span<const std::wstring> words) {
    return std::ranges::all_of(
        words, [text](const std::wstring& word) { return text.find(word) != std::wstring_view::npos; });
}
