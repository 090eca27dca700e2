#include "command/controls.h"

#include <charconv>
#include <string_view>

#include "command/picture_error.h"

namespace nevrel {
namespace {

constexpr char kColorKeyOption[] = "--color-key";
constexpr char kInvertOption[] = "--invert";

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

PF_Pixel KeyColor(const std::string& text) {
    constexpr std::string_view kDigits = "0123456789abcdefABCDEF";
    const std::string_view digits = std::string_view(text).substr(text.empty() ? 0 : 1);
    if (text.size() != 7 || text[0] != '#' ||
        digits.find_first_not_of(kDigits) != std::string_view::npos) {
        throw UsageError(std::string(kColorKeyOption) + ": '" + text +
                         "' is not a color from '#000000' to '#ffffff'");
    }
    const A_long color = *ParseNumber(digits, 16);
    return {255, static_cast<A_u_char>(color >> 16), static_cast<A_u_char>(color >> 8),
            static_cast<A_u_char>(color)};
}

}  // namespace

void ApplyControls(const ControlValues& values, host_kit::Instance& instance) {
    for (std::size_t i = 0; i < kSliderOptions.size(); ++i) {
        if (!values.sliders[i]) continue;
        const SliderOption& option = kSliderOptions[i];
        instance.setSlider(option.id,
                           SliderValue(option, *values.sliders[i], instance.param(option.id).u.sd));
    }
    if (values.colorKey) {
        instance.setColor(kKeyColor, KeyColor(*values.colorKey));
        instance.setCheckbox(kColorKeyEnable, true);
    }
    if (values.withoutColorKey) instance.setCheckbox(kColorKeyEnable, false);
    if (values.invert) instance.setCheckbox(kKeyInvert, true);
    if (values.withoutInvert) instance.setCheckbox(kKeyInvert, false);
}

std::string OptionOf(A_long id) {
    for (const SliderOption& option : kSliderOptions) {
        if (option.id == id) return option.option;
    }
    if (id == kColorKeyEnable || id == kKeyColor) return kColorKeyOption;
    return id == kKeyInvert ? kInvertOption : "";
}

}  // namespace nevrel
