// The sample studio's plug-ins that only system calls can register. Every maker and product is invented.
#pragma once

namespace studio {

enum class Kind { Effect, Instrument, MediaObject, WrappedEffect, WrappedInstrument };

struct Plugin {
    Kind kind;
    const char* code;  // four letters, the first group of the CLSID
    const wchar_t* name;
    const wchar_t* maker;
    bool hasFile = true;
};

inline constexpr Plugin kPlugins[] = {
    {Kind::Effect, "TwPl", L"Tarnwick Plate", L"Tarnwick Audio"},
    {Kind::Effect, "TwCm", L"Tarnwick Compressor", L"Tarnwick Audio"},
    {Kind::Effect, "TwEq", L"Tarnwick Ten Bands", L"Tarnwick Audio"},
    {Kind::Effect, "TwNg", L"Tarnwick Noise Gate", L"Tarnwick Audio"},
    {Kind::Effect, "TwRv", L"Tarnwick Stone Reverb", L"Tarnwick Audio"},
    {Kind::Effect, "GrKh", L"Gr\u00fcnwald Kammerhall", L"Gr\u00fcnwald"},
    {Kind::Effect, "GrEc", L"Gr\u00fcnwald Echoband", L"Gr\u00fcnwald"},
    {Kind::Effect, "GrWh", L"Gr\u00fcnwald Wah", L"Gr\u00fcnwald"},
    {Kind::Effect, "KbCh", L"Kettlebrae Chorus", L"Kettlebrae"},
    {Kind::Effect, "KbFl", L"Kettlebrae Flanger", L"Kettlebrae"},
    {Kind::Effect, "KbPh", L"Kettlebrae Phaser", L"Kettlebrae"},
    {Kind::Effect, "KbSp", L"Kettlebrae Spring", L"Kettlebrae"},
    {Kind::Effect, "OsDl", L"Oskeda Long Delay", L"Oskeda Sound"},
    {Kind::Effect, "OsMd", L"Oskeda Multi-Tap", L"Oskeda Sound"},
    {Kind::Effect, "OsPn", L"Oskeda Autopan", L"Oskeda Sound"},
    {Kind::Effect, "PmAm", L"Pelimond Amp Shed", L"Pelimond DSP"},
    {Kind::Effect, "PmCb", L"Pelimond Cabinet", L"Pelimond DSP"},
    {Kind::Effect, "PmLf", L"Pelimond Lo-Fi", L"Pelimond DSP"},
    {Kind::Effect, "YhTp", L"Ysterholm Tape", L"Ysterholm"},
    // Its file was deleted without an uninstaller.
    {Kind::Effect, "YhGn", L"Ysterholm Gone Astray", L"Ysterholm", false},

    {Kind::Instrument, "CvWt", L"Corvane Wavetable", L"Corvane Studio"},
    {Kind::Instrument, "CvTn", L"Corvane Tonewheel", L"Corvane Studio"},
    {Kind::Instrument, "CvSp", L"Corvane Sample Deck", L"Corvane Studio"},
    {Kind::Instrument, "HmSt", L"Halvmark Streicher", L"Halvmark"},
    {Kind::Instrument, "KbMs", L"Kettlebrae Mono", L"Kettlebrae"},
    {Kind::Instrument, "PmSy", L"Pelimond Poly Eight", L"Pelimond DSP"},
    {Kind::Instrument, "YhDr", L"Ysterholm Drum Room", L"Ysterholm"},

    {Kind::MediaObject, "QmCh", L"Quillgate Chorus Object", L"Quillgate"},
    {Kind::MediaObject, "QmCm", L"Quillgate Compressor Object", L"Quillgate"},
    {Kind::MediaObject, "QmDs", L"Quillgate Distortion Object", L"Quillgate"},
    {Kind::MediaObject, "QmEc", L"Quillgate Echo Object", L"Quillgate"},
    {Kind::MediaObject, "QmEq", L"Quillgate Equalizer Object", L"Quillgate"},
    {Kind::MediaObject, "QmGa", L"Quillgate Gargle Object", L"Quillgate"},
    {Kind::MediaObject, "QmRv", L"Quillgate Reverb Object", L"Quillgate"},
    {Kind::MediaObject, "QmWd", L"Quillgate Widener Object", L"Quillgate"},

    {Kind::WrappedEffect, "LgBd", L"VST Brass Delay", L"Kettlebrae"},
    {Kind::WrappedEffect, "LgCr", L"VST Canyon Reverb", L"Kettlebrae"},
    {Kind::WrappedEffect, "LgDt", L"VST Dust Tape", L"Ysterholm"},
    {Kind::WrappedEffect, "LgMf", L"VST Morning Filter", L"Oskeda Sound"},
    {Kind::WrappedEffect, "LgRm", L"VST Ring Meadow", L"Pelimond DSP"},
    {Kind::WrappedEffect, "LgSq", L"VST Squeezebox", L"Tarnwick Audio"},

    {Kind::WrappedInstrument, "LgAp", L"VST Attic Piano", L"Tarnwick Audio"},
    {Kind::WrappedInstrument, "LgBl", L"VST Bell Tower", L"Halvmark"},
    {Kind::WrappedInstrument, "LgHs", L"VST Harvest Synth", L"Pelimond DSP"},
    {Kind::WrappedInstrument, "LgOr", L"VST Old Organ", L"Halvmark"},
};

}  // namespace studio
