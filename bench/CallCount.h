// How often the bench's own code calls the registry.
#pragma once

/// Counts from the first call on; what the system's libraries do among themselves is not seen.
void CountRegistryCalls();
int RegistryCalls();
