// The user's defaults for new instances, in an INI file beside the module.
#pragma once

#include "kernel/effect_values.h"
#include "sdk/effect_api.h"
#include "windows_stand_in/system_text.h"

/// The default values of the controls and the choice of their layout. Values come from a file that
/// anyone may edit: they can be any integer.
struct ParamDefaults : EffectValues {
    A_long colorKeyGroup;  ///< non-zero: the colour-key controls sit in a group

    friend bool operator==(const ParamDefaults&, const ParamDefaults&) = default;
};
static_assert(sizeof(ParamDefaults) == 40, "ten 32-bit integers");

/// The factory defaults.
inline constexpr ParamDefaults builtInDefaults{{.colorThreshold = 10,
                                                .softness = 70,
                                                .bias = 0,
                                                .colorKeyEnable = 0,
                                                .keyRed = 255,
                                                .keyGreen = 255,
                                                .keyBlue = 255,
                                                .keyThreshold = 0,
                                                .keyInvert = 0},
                                               1};

/// Whether stored values do not reach the host's controls: After Effects below version 12.12 of its
/// effect interface. The layout choice counts everywhere.
[[nodiscard]] bool hostIgnoresDefaults(const PF_InData* inData);

/// The file's path: the module's own with the extension "ini". Empty when there is none.
[[nodiscard]] SystemText DefaultsFilePath(const PF_InData* inData);

/// Overwrites each field that the file has a key for; a file that cannot be read has none.
void ReadParamDefaults(ParamDefaults& defaults, const PF_InData* inData);

/// Writes each field to its key, whatever the file holds. A failure to write is passed over.
void WriteParamDefaults(const ParamDefaults& defaults, const PF_InData* inData);
