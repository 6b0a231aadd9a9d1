// Where the parts of the one-line prompt stand, from what was measured when it opened.
#pragma once

#include <algorithm>
#include <cstddef>

#include "Geometry.h"

struct PromptMeasures {
    int labelTextWidth = 0;
    std::size_t valueLength = 0;    // characters
    int averageCharacter = 0;       // width
    int lineHeight = 0;             // with the space between lines
    Rect label, value, ok, cancel;  // as the template has them
    int widest = 0;                 // that the client area can be on this screen
};

struct PromptPlaces {
    Rect label, value, ok, cancel;
    int clientWidth = 0;
};

constexpr PromptPlaces PlacePrompt(const PromptMeasures& m) {
    constexpr int kLeastLineHeight = 8;
    const int gap = m.cancel.left - m.ok.right;
    const auto moveTo = [](const Rect& r, int left) { return Rect{left, r.top, left + r.Width(), r.bottom}; };
    const int buttons = gap + m.ok.Width() + gap + m.cancel.Width() + m.label.left;

    PromptPlaces places;
    places.label = {m.label.left, m.label.top, m.label.left + m.labelTextWidth + m.averageCharacter,
                    m.label.top + std::max(m.lineHeight, kLeastLineHeight)};
    const int characters = m.valueLength == 0 ? 12 : static_cast<int>(m.valueLength) + 10;
    const int wanted = places.label.right + (characters + 2) * m.averageCharacter;
    // A very long value must not push the buttons off the screen.
    places.value = {places.label.right, m.value.top, std::min(wanted, m.widest - buttons), m.value.bottom};
    places.ok = moveTo(m.ok, places.value.right + gap);
    places.cancel = moveTo(m.cancel, places.ok.right + gap);
    places.clientWidth = places.cancel.right + m.label.left;
    return places;
}
