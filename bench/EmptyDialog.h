// What tells the empty dialog from other windows.
#pragma once

inline constexpr wchar_t kEmptyDialogTitle[] = L"Empty dialog";
