#include "params/defaults_file.h"

#include <algorithm>
#include <cstdio>

#include "host/plugin_path.h"
#include "windows_stand_in/windows_api.h"

namespace {

struct ValueKey {
    const char* name;
    std::int32_t EffectValues::*field;
};

constexpr char valuesSection[] = "defaults";
constexpr ValueKey valueKeys[] = {
    {"ColorThreshold", &EffectValues::colorThreshold},
    {"Softness", &EffectValues::softness},
    {"Bias", &EffectValues::bias},
    {"ColorkeyEnable", &EffectValues::colorKeyEnable},
    {"KeycolorR", &EffectValues::keyRed},
    {"KeycolorG", &EffectValues::keyGreen},
    {"KeycolorB", &EffectValues::keyBlue},
    {"ColorkeyThreshold", &EffectValues::keyThreshold},
    {"ColorkeyInvert", &EffectValues::keyInvert},
};

constexpr char layoutSection[] = "ui";
constexpr char groupKey[] = "ColorkeyGroup";

void ReadValue(const std::string& path, const char* section, const char* key, std::int32_t& value) {
    value = static_cast<std::int32_t>(GetPrivateProfileIntA(section, key, value, path.c_str()));
}

void WriteValue(const std::string& path, const char* section, const char* key, std::int32_t value) {
    char text[32];
    std::snprintf(text, sizeof text, "%d", value);
    static_cast<void>(WritePrivateProfileStringA(section, key, text, path.c_str()));
}

}  // namespace

bool hostIgnoresDefaults(const PF_InData* inData) {
    const PF_SpecVersion& version = inData->version;
    return inData->appl_id == PF_AppID_AfterEffects &&
           (version.major < 12 || (version.major == 12 && version.minor < 12));
}

std::string DefaultsFilePath(const PF_InData* inData) {
    std::string path = PluginPath(inData);
    if (path.empty()) return {};
    const std::size_t dot = path.rfind('.');
    path = (dot == std::string::npos ? path + '.' : path.substr(0, dot + 1)) + "ini";
    path.resize(std::min(path.size(), PF_MAX_PATH_LEN - 1));
    return path;
}

// Without a path the profile functions would turn to the system's own INI file, so they are not
// asked.

void ReadParamDefaults(ParamDefaults& defaults, const PF_InData* inData) {
    const std::string path = DefaultsFilePath(inData);
    if (path.empty()) return;
    if (!hostIgnoresDefaults(inData)) {
        for (const ValueKey& key : valueKeys)
            ReadValue(path, valuesSection, key.name, defaults.*key.field);
    }
    ReadValue(path, layoutSection, groupKey, defaults.colorKeyGroup);
}

void WriteParamDefaults(const ParamDefaults& defaults, const PF_InData* inData) {
    const std::string path = DefaultsFilePath(inData);
    if (path.empty()) return;
    if (!hostIgnoresDefaults(inData)) {
        for (const ValueKey& key : valueKeys)
            WriteValue(path, valuesSection, key.name, defaults.*key.field);
    }
    WriteValue(path, layoutSection, groupKey, defaults.colorKeyGroup);
}
