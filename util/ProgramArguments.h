#pragma once

#include <string>
#include <vector>

/// The command line of the process as the system takes it apart, without the program's name.
std::vector<std::wstring> ProgramArguments();
