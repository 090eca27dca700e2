// Every text that the module shows.
#pragma once

#include "sdk/effect_types.h"

/// The ids of the texts.
enum class TextId : A_long {
    EffectName = 0,
    Copyright = 1,
    ColorThreshold = 2,
    Softness = 3,
    ColorKeyEnable = 4,
    ColorKeyEnableLabel = 5,
    KeyColor = 6,
    ColorKeyGroup = 7,
    KeyThreshold = 8,
    KeyInvert = 9,
    KeyInvertLabel = 10,
    Bias = 11,
    Settings = 12,
    GroupParameters = 13,
    StoreDefaults = 14,
    RestoreDefaults = 15,
};

/// The text of that id: Japanese, in code page 932, when the language option says JP or when there
/// is none and the system's code page is 932; English otherwise. "-" for an id without a text. The
/// string is constant.
[[nodiscard]] const char* LookupString(TextId id);
