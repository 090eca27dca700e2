#include "params/defaults_file.h"

#include <algorithm>
#include <string>

#include "host/plugin_path.h"

namespace {

struct ValueKey {
    const TCHAR* name;
    std::int32_t EffectValues::*field;
};

constexpr TCHAR valuesSection[] = TEXT("defaults");
constexpr ValueKey valueKeys[] = {
    {TEXT("ColorThreshold"), &EffectValues::colorThreshold},
    {TEXT("Softness"), &EffectValues::softness},
    {TEXT("Bias"), &EffectValues::bias},
    {TEXT("ColorkeyEnable"), &EffectValues::colorKeyEnable},
    {TEXT("KeycolorR"), &EffectValues::keyRed},
    {TEXT("KeycolorG"), &EffectValues::keyGreen},
    {TEXT("KeycolorB"), &EffectValues::keyBlue},
    {TEXT("ColorkeyThreshold"), &EffectValues::keyThreshold},
    {TEXT("ColorkeyInvert"), &EffectValues::keyInvert},
};

constexpr TCHAR layoutSection[] = TEXT("ui");
constexpr TCHAR groupKey[] = TEXT("ColorkeyGroup");

void ReadValue(const SystemText& path, const TCHAR* section, const TCHAR* key,
               std::int32_t& value) {
    value = static_cast<std::int32_t>(GetPrivateProfileInt(section, key, value, path.c_str()));
}

void WriteValue(const SystemText& path, const TCHAR* section, const TCHAR* key,
                std::int32_t value) {
    const std::string digits = std::to_string(value);
    const SystemText text(digits.begin(), digits.end());
    static_cast<void>(WritePrivateProfileString(section, key, text.c_str(), path.c_str()));
}

}  // namespace

bool hostIgnoresDefaults(const PF_InData* inData) {
    const PF_SpecVersion& version = inData->version;
    return inData->appl_id == PF_AppID_AfterEffects &&
           (version.major < 12 || (version.major == 12 && version.minor < 12));
}

SystemText DefaultsFilePath(const PF_InData* inData) {
    SystemText path = PluginPath(inData);
    if (path.empty()) return {};
    const std::size_t dot = path.rfind(TEXT('.'));
    path.resize(std::min(dot, path.size()));
    path += TEXT(".ini");
    path.resize(std::min(path.size(), PF_MAX_PATH_LEN - 1));
    return path;
}

// Without a path the profile functions would turn to the system's own INI file, so they are not
// asked.

void ReadParamDefaults(ParamDefaults& defaults, const PF_InData* inData) {
    const SystemText path = DefaultsFilePath(inData);
    if (path.empty()) return;
    if (!hostIgnoresDefaults(inData)) {
        for (const ValueKey& key : valueKeys)
            ReadValue(path, valuesSection, key.name, defaults.*key.field);
    }
    ReadValue(path, layoutSection, groupKey, defaults.colorKeyGroup);
}

void WriteParamDefaults(const ParamDefaults& defaults, const PF_InData* inData) {
    const SystemText path = DefaultsFilePath(inData);
    if (path.empty()) return;
    if (!hostIgnoresDefaults(inData)) {
        for (const ValueKey& key : valueKeys)
            WriteValue(path, valuesSection, key.name, defaults.*key.field);
    }
    WriteValue(path, layoutSection, groupKey, defaults.colorKeyGroup);
}
