#include "capi/controls.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <type_traits>

namespace {

// A later version's fields begin where this version's struct ends.
static_assert(sizeof(nevrel_settings) == 40);

// Larger structs are taken for an uninitialised size.
constexpr std::size_t largestSettings = 4096;

constexpr nevrel_control controls[] = {
    {"color threshold",
     "color_threshold",
     "Two neighbouring pixels form an edge when their colours differ by more than this.",
     NEVREL_SLIDER,
     1,
     255,
     {10},
     offsetof(nevrel_settings, color_threshold),
     0},
    {"softness",
     "softness",
     "How far an edge is blended along its steps, in percent; 0 turns smoothing off.",
     NEVREL_SLIDER,
     0,
     100,
     {70},
     offsetof(nevrel_settings, softness),
     0},
    {"bias",
     "bias",
     "How fast the blend falls off along a step.",
     NEVREL_SLIDER,
     0,
     100,
     {0},
     offsetof(nevrel_settings, bias),
     0},
    {"color key enable",
     "color_key_enable",
     "Makes the key color transparent.",
     NEVREL_CHECKBOX,
     0,
     1,
     {0},
     offsetof(nevrel_settings, color_key_enable),
     1},
    {"key color",
     "key_color",
     "The colour to key out.",
     NEVREL_COLOR,
     0,
     255,
     {255, 255, 255},
     offsetof(nevrel_settings, key_red),
     1},
    {"key color threshold",
     "key_color_threshold",
     "How far a colour may be from the key color and still count as it.",
     NEVREL_SLIDER,
     0,
     255,
     {0},
     offsetof(nevrel_settings, key_threshold),
     1},
    {"invert",
     "invert",
     "Makes every colour but the key color transparent.",
     NEVREL_CHECKBOX,
     0,
     1,
     {0},
     offsetof(nevrel_settings, key_invert),
     1},
};

bool IsKnownSize(std::size_t size) {
    return size >= sizeof(nevrel_settings) && size <= largestSettings &&
           size % sizeof(std::int32_t) == 0;
}

std::size_t FieldCount(const nevrel_control& control) {
    return control.kind == NEVREL_COLOR ? 3 : 1;
}

/// The fields of a control. Integer is const-qualified for settings that are only read.
template <typename Integer, typename Settings>
Integer* FieldsOf(const nevrel_control& control, Settings& settings) {
    using Byte = std::conditional_t<std::is_const_v<Integer>, const std::byte, std::byte>;
    return reinterpret_cast<Integer*>(reinterpret_cast<Byte*>(&settings) + control.offset);
}

nevrel_settings Defaults() {
    nevrel_settings settings{};
    settings.size = sizeof settings;
    for (const nevrel_control& control : controls) {
        std::copy_n(control.default_value, FieldCount(control),
                    FieldsOf<std::int32_t>(control, settings));
    }
    return settings;
}

/// Whether nothing is asked for that only a later version can do.
bool IsZeroBehindKnown(const nevrel_settings& settings) {
    const auto* bytes = reinterpret_cast<const std::byte*>(&settings);
    return std::all_of(bytes + sizeof settings, bytes + settings.size,
                       [](std::byte byte) { return byte == std::byte{0}; });
}

bool IsInRange(const nevrel_control& control, const nevrel_settings& settings) {
    const auto* fields = FieldsOf<const std::int32_t>(control, settings);
    return std::all_of(fields, fields + FieldCount(control), [&](std::int32_t value) {
        return value >= control.minimum && value <= control.maximum;
    });
}

}  // namespace

nevrel_status ReadSettings(const nevrel_settings* settings, EffectValues& values) noexcept {
    const nevrel_settings defaults = Defaults();
    const nevrel_settings& s = settings == nullptr ? defaults : *settings;
    if (!IsKnownSize(s.size) || !IsZeroBehindKnown(s)) return NEVREL_BAD_ARGUMENT;
    const bool inRange =
        std::all_of(std::begin(controls), std::end(controls),
                    [&](const nevrel_control& control) { return IsInRange(control, s); });
    if (!inRange) return NEVREL_BAD_SETTING;
    values = {.colorThreshold = s.color_threshold,
              .softness = s.softness,
              .bias = s.bias,
              .colorKeyEnable = s.color_key_enable,
              .keyRed = s.key_red,
              .keyGreen = s.key_green,
              .keyBlue = s.key_blue,
              .keyThreshold = s.key_threshold,
              .keyInvert = s.key_invert};
    return NEVREL_OK;
}

nevrel_status nevrel_settings_init(nevrel_settings* settings, size_t size) {
    if (settings == nullptr || !IsKnownSize(size)) return NEVREL_BAD_ARGUMENT;
    nevrel_settings defaults = Defaults();
    defaults.size = static_cast<std::uint32_t>(size);
    std::memset(settings, 0, size);
    std::memcpy(settings, &defaults, sizeof defaults);
    return NEVREL_OK;
}

size_t nevrel_control_count() { return std::size(controls); }

const nevrel_control* nevrel_control_at(size_t index) {
    return index < std::size(controls) ? &controls[index] : nullptr;
}
