#pragma once

#include <windows.h>

#include <string>

/// The system's own words for one of its errors, or its number.
std::wstring SystemErrorText(DWORD error);
