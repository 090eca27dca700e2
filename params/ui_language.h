// The language of the user interface.
#pragma once

#include "sdk/effect_types.h"

/// A language code holds the last four letters of the language option's word, the last one in the
/// lowest byte.
inline constexpr A_long languageJapanese = 0x4A50;  // "JP"

/// The code that the option -L gives on a command line, for example 0x4A50 for `-L jp`; 0 without
/// the option. An option follows a blank or a tab; double-quoted stretches hold none. The last of
/// several counts.
[[nodiscard]] A_long ParseLanguageOption(const char* commandLine);

/// The code on this process's command line, read at the first call and fixed from then on.
[[nodiscard]] A_long UiLanguage();
