#include "NameOrder.h"

#include <windows.h>

int CompareIgnoringCase(std::wstring_view a, std::wstring_view b) {
    return ::CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                                  TRUE) -
           CSTR_EQUAL;
}
