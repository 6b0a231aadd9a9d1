// Which plug-ins the list shows.
#pragma once

enum class VisibilityMode {
    Enabled,   // the list shows what the host offers, and the button excludes
    Excluded,  // the list shows what was excluded, and the button enables
};

struct Visibility {
    VisibilityMode mode = VisibilityMode::Enabled;
    bool showPermanent = false;
};

/// Whether a plug-in is listed, from what is known of it and what the user asked to see.
constexpr bool IsListed(const Visibility& visibility, bool permanent, bool excluded) {
    if (permanent && (visibility.mode == VisibilityMode::Enabled || !visibility.showPermanent)) return false;
    if (excluded) return visibility.mode == VisibilityMode::Excluded;
    return visibility.mode == VisibilityMode::Enabled || permanent;
}
