// Texts that differ in case, accents or width made alike, for searching.
#pragma once

#include <string>

/// Upper case, without accents, and with the usual form of narrow, wide and otherwise special letters. What
/// is no text, such as half a surrogate pair, keeps the text from losing more than its case.
std::wstring FoldedText(const std::wstring& text);
