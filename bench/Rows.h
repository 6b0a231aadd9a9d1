// What is measured, and how much longer than its floor each may take.
#pragma once

#include <string_view>

struct RowBound {
    std::string_view name;
    double bound;
    std::string_view why;  // the bound is another than kUsual
};

inline constexpr double kUsual = 1.3;

inline constexpr RowBound kRows[] = {
    {"export small presets", kUsual, ""},
    {"import small presets", kUsual, ""},
    {"delete all small presets", kUsual, ""},
    {"export presets of 1 MB", kUsual, ""},
    {"import presets of 1 MB", kUsual, ""},
    {"count presets, plug-ins", kUsual, ""},
    {"backup of small values", 1.2, "the user waits for it at each step"},
    {"backup of large values", 1.2, "the user waits for it at each step"},
    {"backup of files of 1 MB", 1.2, "the user waits for it at each step"},
    {"backup of a file of 200 MB", 1.2, "the user waits for it at each step"},
    {"layout save", kUsual, ""},
    {"layout autosave", kUsual, ""},
    {"layout load", kUsual, ""},
    {"layout undo, or redo", kUsual, ""},
    {"flat layout save", kUsual, ""},
    {"flat layout autosave", kUsual, ""},
    {"flat layout load", kUsual, ""},
    {"flat layout undo, or redo", kUsual, ""},
    {"folder of layouts", kUsual, ""},
    {"sort", kUsual, ""},
    {"delete half", 1.5,
     "each item is asked whether it is selected, and leaves the order beside the control"},
    {"drag half", 6, "the drag's picture takes as long for a few items as for all"},
    {"enumeration", kUsual, ""},
    {"enumeration, beside reg query /s", 1, "what one would do without the program"},
    {"list --format json", kUsual, ""},
    {"names of wrapped plug-ins", kUsual, ""},
    {"category switch", 1.5, "with the order of a list box"},
    {"enabled ones shown again", 1.5, "with the order of a list box"},
    {"a key in the field Find", 1.5, "with the order of a list box"},
    {"select one", kUsual, ""},
    {"select all", kUsual, ""},
    {"add plug-ins", kUsual, ""},
    {"exclude", 1.5, "with the order of a list box"},
    {"enable", 1.5, "with the order of a list box"},
    {"found anew after a scan", 1.5, "with the order of a list box"},
    {"look for what to tidy up", kUsual, ""},
    {"fill layout by vendor", kUsual, ""},
    {"save a studio set", 1.5, "a file dialog comes first, which is not measured"},
    {"find a set loaded already", 1.5, "a file dialog comes first, which is not measured"},
    {"load a studio set", 1.5, "a file dialog comes first, which is not measured"},
    {"start, shown, beside its controls", kUsual, ""},
    {"start, shown, beside an empty dialog", 3, "the floor has none of the controls"},
    {"start, filled", kUsual, ""},
};
