#include <gtest/gtest.h>

#include "SelectionColours.h"

namespace {

// Blue comes first.
constexpr SystemColours kThemes[] = {
    {0xFFFFFF, 0x000000, 0xD77800, 0xFFFFFF, 0x6D6D6D},  // Windows
    {0xFFFFFF, 0x000000, 0xFA9630, 0xFFFFFF, 0x6D6D6D},  // Wine
    {0x000000, 0xFFFFFF, 0xFFEB1A, 0x000000, 0x3FF23F},  // light on dark
};

TEST(SelectionColours, WithoutTheFocusARowIsPlainToSeeAndToRead) {
    for (SystemColours system : kThemes) {
        const RowColours row = UnfocusedSelection(system);
        EXPECT_GE(Contrast(row.text, row.background), 4.5) << system.highlight;
        EXPECT_GE(Contrast(system.window, row.background), 4.5) << system.highlight;
        EXPECT_NE(row.background, system.highlight) << "not as with the focus";
        const Colour missing = MissingText(system, true, row);
        EXPECT_TRUE(missing != row.text && Contrast(missing, row.background) >= 1.5) << system.highlight;
        system.contrastTheme = true;
        EXPECT_EQ(UnfocusedSelection(system), (RowColours{system.highlightText, system.highlight}));
        EXPECT_EQ(MissingText(system, true, row), row.text);
    }
}

}  // namespace
