#pragma once

#include <string>

/// The per-user folder in which the maker's programs keep shared files, from the environment; empty, and
/// asked for again by the next call, as long as the variable is not set.
const std::wstring& AppDataRoot();
