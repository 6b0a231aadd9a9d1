// The language of the program's texts.
#pragma once

/// The system's, or the nearest that there is.
void TakeSystemLanguage();
/// The one that the host's setup chose; where it names none, all stays as it is.
void TakeSettingLanguage();
