// The colours of the tree's selected rows.
#pragma once

#include <cstdint>

/// Red in the lowest byte, then green and blue, as in the system's COLORREF.
using Colour = std::uint32_t;

/// What the system says at the moment.
struct SystemColours {
    Colour window = 0;
    Colour windowText = 0;
    Colour highlight = 0;
    Colour highlightText = 0;
    Colour greyText = 0;
    bool contrastTheme = false;
};

struct RowColours {
    Colour text;
    Colour background;
    friend constexpr bool operator==(const RowColours&, const RowColours&) = default;
};

/// How well the one is seen on the other: from 1, not at all, to 21, black on white. Text wants 4.5.
double Contrast(Colour a, Colour b);

/// Of a selected row while the keyboard is elsewhere: muted, but as plain to see on the window as its text is
/// on it.
RowColours UnfocusedSelection(const SystemColours& system);

/// The text of a missing plug-in in a row of these colours. In a contrast theme only the icon of a selected
/// one tells: there is no second colour that the theme promises to be readable.
Colour MissingText(const SystemColours& system, bool selected, const RowColours& row);
