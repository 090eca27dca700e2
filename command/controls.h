// The effect's controls as options of the command.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "host_kit/instance.h"
#include "sdk/effect_api.h"

namespace nevrel {

/// Ids under which the effect declares its parameters; hosts store them in projects, so they never
/// change.
enum ParamId : A_long {
    idColorThreshold = 1,
    idSoftness = 2,
    idColorKeyEnable = 3,
    idKeyColor = 4,
    idKeyThreshold = 5,
    idKeyInvert = 6,
    idBias = 7,
};

/// A slider and its option. Ranges and defaults are the module's own and stand nowhere here.
struct SliderOption {
    ParamId id;
    const char* option;
    const char* help;
};

inline constexpr std::array<SliderOption, 4> sliderOptions{{
    {idColorThreshold, "--color-threshold", "color difference above which two pixels form an edge"},
    {idSoftness, "--softness", "how far edges are smoothed, in percent; 0 leaves them as they are"},
    {idBias, "--bias", "shape of the blend along an edge"},
    {idKeyThreshold, "--key-threshold",
     "color distance within which a pixel counts as the key color"},
}};

/// What the user asked for, as typed; what is absent keeps the module's default.
struct ControlValues {
    std::array<std::optional<std::string>, sliderOptions.size()> sliders;
    std::optional<std::string> colorKey;  ///< switches the key on
    bool withoutColorKey = false;
    bool invert = false;
    bool withoutInvert = false;
};

/// Sets the instance's parameters. Throws UsageError with the option, the value and what is
/// allowed.
void ApplyControls(const ControlValues& values, host_kit::Instance& instance);

/// The option that sets a parameter, empty when there is none.
[[nodiscard]] std::string OptionOf(A_long id);

}  // namespace nevrel
