// What the field Find finds: texts in which all of its words occur.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

// A rule of texts as they are: whoever wants case or accents ignored folds both texts alike before.

/// What stands between blanks, each word once, in an order that does not depend on the text's. No other
/// character has a meaning.
std::vector<std::wstring> WordsOf(std::wstring_view text);

/// Whether each word occurs somewhere in the text; without words it is always so.
bool MatchesWords(std::wstring_view text, std::span<const std::wstring> words);
