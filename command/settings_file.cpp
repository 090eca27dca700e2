#include "command/settings_file.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <span>
#include <sstream>
#include <string>
#include <string_view>

#include "command/controls.h"
#include "command/errors.h"
#include "command/files/replace_file.h"

namespace nevrel {
namespace {

using host_kit::Instance;

constexpr std::string_view sectionName = "defaults";

struct Key {
    std::string_view name;
    ParamId control;
    A_u_char PF_Pixel::*channel = nullptr;  ///< of a colour
};

constexpr std::array<Key, 9> keys{{{"ColorThreshold", idColorThreshold},
                                   {"Softness", idSoftness},
                                   {"Bias", idBias},
                                   {"ColorkeyEnable", idColorKeyEnable},
                                   {"KeycolorR", idKeyColor, &PF_Pixel::red},
                                   {"KeycolorG", idKeyColor, &PF_Pixel::green},
                                   {"KeycolorB", idKeyColor, &PF_Pixel::blue},
                                   {"ColorkeyThreshold", idKeyThreshold},
                                   {"ColorkeyInvert", idKeyInvert}}};

struct Range {
    A_long first, last;
};

Range RangeOf(const Key& key, const PF_ParamDef& param) {
    if (key.channel != nullptr) return {0, 255};
    if (param.param_type == PF_Param_CHECKBOX) return {0, 1};
    return {param.u.sd.valid_min, param.u.sd.valid_max};
}

A_long ValueOf(const Key& key, const PF_ParamDef& param) {
    if (key.channel != nullptr) return param.u.cd.value.*key.channel;
    return param.param_type == PF_Param_CHECKBOX ? param.u.bd.value : param.u.sd.value;
}

void SetValue(const Key& key, const PF_ParamDef& param, A_long value, Instance& instance) {
    if (key.channel != nullptr) {
        PF_Pixel color = param.u.cd.value;
        color.*key.channel = static_cast<A_u_char>(value);
        instance.setColor(key.control, color);
    } else if (param.param_type == PF_Param_CHECKBOX) {
        instance.setCheckbox(key.control, value != 0);
    } else {
        instance.setSlider(key.control, value);
    }
}

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Names are the same in capitals and small letters.
bool IsName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        const auto small = [](char c) {
            return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        };
        return small(x) == small(y);
    });
}

/// Sets the control that a line KEY=VALUE names. Throws UsageError with `where`.
void SetByLine(std::string_view line, const std::string& where, Instance& instance) {
    const std::size_t equals = line.find('=');
    const std::string_view name = Trimmed(line.substr(0, equals));
    const auto* key = std::find_if(keys.begin(), keys.end(),
                                   [&](const Key& known) { return IsName(known.name, name); });
    if (key == keys.end() || equals == std::string_view::npos)
        throw UsageError(where + "'" + std::string(line) + "' sets no control");
    const std::string_view text = Trimmed(line.substr(equals + 1));
    const PF_ParamDef param = instance.param(key->control);
    const Range range = RangeOf(*key, param);
    A_long value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || value < range.first ||
        value > range.last) {
        throw UsageError(where + std::string(key->name) + " is '" + std::string(text) +
                         "' and no whole number from " + std::to_string(range.first) + " to " +
                         std::to_string(range.last));
    }
    SetValue(*key, param, value, instance);
}

}  // namespace

void ReadSettingsFile(const std::filesystem::path& path, Instance& instance) {
    std::ifstream file(path);
    std::string whole;
    bool isOurs = false, hasOurs = false;
    for (int number = 1; std::getline(file, whole); ++number) {
        const std::string_view line = Trimmed(whole);
        if (line.empty() || line.front() == ';') continue;
        if (line.front() == '[') {
            isOurs = line.back() == ']' && IsName(line.substr(1, line.size() - 2), sectionName);
            hasOurs = hasOurs || isOurs;
        } else if (isOurs) {
            SetByLine(line, path.string() + ":" + std::to_string(number) + ": ", instance);
        }
    }
    if (!file.eof()) throw UsageError("--settings: " + path.string() + ": cannot be read");
    if (!hasOurs) {
        throw UsageError("--settings: " + path.string() + ": has no section [" +
                         std::string(sectionName) + "]");
    }
}

std::string SettingsText(const Instance& instance) {
    std::ostringstream text;
    text << '[' << sectionName << "]\n";
    for (const Key& key : keys)
        text << key.name << '=' << ValueOf(key, instance.param(key.control)) << '\n';
    return text.str();
}

void WriteSettingsFile(const std::filesystem::path& path, const Instance& instance) {
    ReplaceFile(path, std::as_bytes(std::span<const char>(SettingsText(instance))));
}

}  // namespace nevrel
