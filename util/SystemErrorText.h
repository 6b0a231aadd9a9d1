#pragma once

#include <windows.h>

#include <string>

/// The system's own words for one of its errors; empty when it has none.
std::wstring SystemErrorText(DWORD error);
