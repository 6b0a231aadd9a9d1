// What the process holds at a moment, and how often its own code has called the registry.
#pragma once

struct Holdings {
    double heapKilobytes = 0;  // in the blocks in use of all heaps
    int handles = 0;
    int gdiObjects = 0;
    int userObjects = 0;  // where the system does not tell: windows and menus

    static Holdings Now();
    Holdings operator-(const Holdings& before) const {
        return {heapKilobytes - before.heapKilobytes, handles - before.handles,
                gdiObjects - before.gdiObjects, userObjects - before.userObjects};
    }
};

double PeakMegabytes();

/// Counts from the first call on; what the system's libraries do among themselves is not seen.
void CountRegistryCalls();
int RegistryCalls();
