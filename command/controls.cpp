#include "command/controls.h"

#include <charconv>
#include <string_view>

#include "command/errors.h"

namespace nevrel {
namespace {

constexpr char colorKeyOption[] = "--color-key";
constexpr char invertOption[] = "--invert";

/// All of `text` as a number; nothing when it is none.
std::optional<A_long> ParseNumber(std::string_view text, int base) {
    A_long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return number;
}

A_long SliderValue(const SliderOption& option, const std::string& text,
                   const PF_SliderDef& slider) {
    const auto value = ParseNumber(text, 10);
    if (value && *value >= slider.valid_min && *value <= slider.valid_max) return *value;
    throw UsageError(std::string(option.option) + ": '" + text + "' is not a whole number from " +
                     std::to_string(slider.valid_min) + " to " + std::to_string(slider.valid_max));
}

struct NamedColor {
    std::string_view name;
    A_long color;
};

/// The sixteen names that HTML 4 and CSS 1 began with.
constexpr NamedColor namedColors[] = {
    {"black", 0x000000},  {"silver", 0xC0C0C0}, {"gray", 0x808080},   {"white", 0xFFFFFF},
    {"maroon", 0x800000}, {"red", 0xFF0000},    {"purple", 0x800080}, {"fuchsia", 0xFF00FF},
    {"green", 0x008000},  {"lime", 0x00FF00},   {"olive", 0x808000},  {"yellow", 0xFFFF00},
    {"navy", 0x000080},   {"blue", 0x0000FF},   {"teal", 0x008080},   {"aqua", 0x00FFFF},
};

/// 0xRRGGBB for '#rrggbb', '#rgb' or a name; nothing for any other text.
std::optional<A_long> ParseColor(std::string_view text) {
    for (const NamedColor& named : namedColors) {
        if (named.name == text) return named.color;
    }
    constexpr std::string_view hexDigits = "0123456789abcdefABCDEF";
    if (!text.starts_with('#') || text.find_first_not_of(hexDigits, 1) != std::string_view::npos)
        return std::nullopt;
    const std::string_view digits = text.substr(1);
    if (digits.size() == 6) return ParseNumber(digits, 16);
    if (digits.size() != 3) return std::nullopt;
    const A_long each = *ParseNumber(digits, 16);
    return (each >> 8) * 0x110000 + (each >> 4 & 15) * 0x1100 + (each & 15) * 0x11;
}

PF_Pixel KeyColor(const std::string& text) {
    const std::optional<A_long> color = ParseColor(text);
    if (!color) {
        throw UsageError(std::string(colorKeyOption) + ": '" + text +
                         "' is not a color; write '#rrggbb', '#rgb' or a name such as 'white'");
    }
    return {255, static_cast<A_u_char>(*color >> 16), static_cast<A_u_char>(*color >> 8),
            static_cast<A_u_char>(*color)};
}

}  // namespace

void ApplyControls(const ControlValues& values, host_kit::Instance& instance) {
    for (std::size_t i = 0; i < sliderOptions.size(); ++i) {
        if (!values.sliders[i]) continue;
        const SliderOption& option = sliderOptions[i];
        instance.setSlider(option.id,
                           SliderValue(option, *values.sliders[i], instance.param(option.id).u.sd));
    }
    if (values.colorKey) {
        instance.setColor(idKeyColor, KeyColor(*values.colorKey));
        instance.setCheckbox(idColorKeyEnable, true);
    }
    if (values.withoutColorKey) instance.setCheckbox(idColorKeyEnable, false);
    if (values.invert) instance.setCheckbox(idKeyInvert, true);
    if (values.withoutInvert) instance.setCheckbox(idKeyInvert, false);
    if (values.invert && instance.param(idColorKeyEnable).u.bd.value == 0) {
        throw UsageError(std::string(invertOption) + ": needs a color key; give " + colorKeyOption +
                         " too");
    }
}

std::string OptionOf(A_long id) {
    for (const SliderOption& option : sliderOptions) {
        if (option.id == id) return option.option;
    }
    if (id == idColorKeyEnable || id == idKeyColor) return colorKeyOption;
    return id == idKeyInvert ? invertOption : "";
}

}  // namespace nevrel
