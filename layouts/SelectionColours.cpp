#include "SelectionColours.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr Colour kMissingText = 0xCDCDCD;

/// By the Web Content Accessibility Guidelines, whose formulas these are.
constexpr double kReadable = 4.5;
/// As much as the grey has on white.
constexpr double kTellable = 1.5;

constexpr unsigned kParts = 16;

unsigned Channel(Colour colour, unsigned shift) { return colour >> shift & 0xFF; }

double Luminance(Colour colour) {
    const auto linear = [colour](unsigned shift) {
        const double value = Channel(colour, shift) / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(0) + 0.7152 * linear(8) + 0.0722 * linear(16);
}

/// `parts` of kParts of the second colour, the rest of the first.
Colour Mixed(Colour first, Colour second, unsigned parts) {
    Colour mixed = 0;
    for (const unsigned shift : {0U, 8U, 16U}) {
        const unsigned sum = Channel(first, shift) * (kParts - parts) + Channel(second, shift) * parts;
        mixed |= sum / kParts << shift;
    }
    return mixed;
}

}  // namespace

double Contrast(Colour a, Colour b) {
    const auto [darker, lighter] = std::minmax({Luminance(a), Luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

RowColours UnfocusedSelection(const SystemColours& system) {
    const RowColours focused{system.highlightText, system.highlight};
    if (system.contrastTheme) return focused;
    const Colour muted = Mixed(system.highlight, system.greyText, kParts / 2);
    // Closer and closer to the colour of text, which can be read on a window.
    for (unsigned parts = 0; parts <= kParts; ++parts) {
        const Colour background = Mixed(muted, system.windowText, parts);
        if (Contrast(system.window, background) >= kReadable) return {system.window, background};
    }
    return focused;
}

Colour MissingText(const SystemColours& system, bool selected, const RowColours& row) {
    if (system.contrastTheme) return selected ? row.text : system.greyText;
    if (!selected || Contrast(kMissingText, row.background) >= kTellable) return kMissingText;
    return Mixed(row.text, row.background, kParts / 2);
}
