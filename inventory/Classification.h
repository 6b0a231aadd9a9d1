// Which category a plug-in belongs to.
#pragma once

#include <optional>

#include "PluginCategory.h"

/// What a VST inventory entry says of its kind.
struct VstKind {
    bool isVst = false;
    bool isVst3 = false;
    bool registerAsSynth = false;
};

/// What the system's registrations say of one class id.
struct RegistrationFacts {
    bool answersAsDmo = false;
    std::optional<bool>
        wrapsVstSynth;  // set when the legacy adapter wraps a VST under this id; true for a synth
    bool markedSoftSynth = false;
    bool isMidiFilter = false;
    bool isControlSurface = false;
};

/// The first match wins: a filter that also answers as a media object is listed as that.
constexpr Category ClassifyPluginCategory(const RegistrationFacts& facts) {
    if (facts.answersAsDmo) return Category::MediaObjects;
    if (facts.wrapsVstSynth) {
        return *facts.wrapsVstSynth ? Category::LegacyVstInstruments : Category::LegacyVstEffects;
    }
    if (facts.markedSoftSynth) return Category::DirectXInstruments;
    if (facts.isMidiFilter) return Category::MidiEffects;
    if (facts.isControlSurface) return Category::ControlSurfaces;
    return Category::DirectXEffects;
}

/// For an entry that is a VST or a VST3; one that claims both counts as VST.
constexpr Category ClassifyPluginCategory(const VstKind& kind) {
    if (kind.registerAsSynth) return kind.isVst ? Category::VstInstruments : Category::Vst3Instruments;
    return kind.isVst ? Category::VstEffects : Category::Vst3Effects;
}
