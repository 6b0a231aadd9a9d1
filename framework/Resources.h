// Texts, dialogs, menus and icons of the program, in the interface language.
#pragma once

#include <windows.h>

#include <span>
#include <string>

#include "Handles.h"

/// The language that the functions below look for first; English (1033) until it is set. What a language does
/// not have is taken from English, id by id. The language is named with every look-up, because not every
/// system that runs this program lets the thread's interface language choose resources.
void SetResourceLanguage(LANGID language);

/// A text of the string table; empty when no language has it.
std::wstring LoadText(UINT id);

/// The template's bytes, for the ...Indirect functions; they live as long as the program. Null when it is not
/// there.
const DLGTEMPLATE* LoadDialogTemplate(UINT id);
std::span<const std::byte> LoadResourceBytes(const wchar_t* type, UINT id);

/// A menu of the caller's own; empty when it is not there.
UniqueMenu LoadMenuResource(UINT id);

/// Icon of the given size in pixels.
UniqueIcon LoadIconResource(UINT id, int width, int height);
