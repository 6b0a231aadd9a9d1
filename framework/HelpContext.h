// The numbers under which dialogs and controls ask for help.
#pragma once

constexpr unsigned HelpOfDialog(unsigned templateId) { return 0x20000 + templateId; }
constexpr unsigned HelpOfControl(unsigned controlId) { return 0x50000 + controlId; }

/// Of the one-line prompt when it asks for the name of a plug-in or a preset.
inline constexpr unsigned kHelpOfNames = 130;
/// Of a list to tick when it is about a studio set.
inline constexpr unsigned kHelpOfSets = 131;
