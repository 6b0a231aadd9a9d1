// The floor of finding all plug-ins.
#pragma once

/// The same questions to the system, each once, with nothing done to the answers. Gives the number of
/// filters.
int BareEnumeration();
