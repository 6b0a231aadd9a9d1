#pragma once

#include <cstdint>
#include <string>

/// With its digits grouped as the user's settings have them: "1,204".
std::wstring NumberText(std::uint64_t number);
