#pragma once

/// Caption of the questions and failures that the program shows.
inline constexpr wchar_t kMessageCaption[] = L"Plug-in Manager";
