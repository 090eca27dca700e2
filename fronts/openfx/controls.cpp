#include "fronts/openfx/controls.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "fronts/control_fields.h"
#include "fronts/openfx/host.h"

namespace {

constexpr char groupKey[] = "color_key", groupName[] = "color key";

const char* TypeOf(nevrel_control_kind kind) {
    switch (kind) {
        case NEVREL_COLOR:
            return "OfxParamTypeRGB";
        case NEVREL_CHECKBOX:
            return "OfxParamTypeBoolean";
        default:
            return "OfxParamTypeInteger";
    }
}

Properties Define(ofx::ParameterSet set, const char* type, const char* key, const char* name) {
    Properties properties;
    properties.status = suites.parameters->paramDefine(set, type, key, &properties.handle);
    properties.set("OfxPropLabel", name);
    return properties;
}

ofx::Status DefineControl(ofx::ParameterSet set, const nevrel_control& control) {
    Properties properties = Define(set, TypeOf(control.kind), control.key, control.name);
    properties.set("OfxParamPropHint", control.description);
    properties.set("OfxParamPropAnimates", 1);
    if (control.in_key_group != 0) properties.set("OfxParamPropParent", groupKey);
    if (control.kind == NEVREL_COLOR) {
        for (int i = 0; i < 3; ++i) {
            const double unit = static_cast<double>(control.default_value[i]) / control.maximum;
            properties.set("OfxParamPropDefault", unit, i);
        }
        return properties.status;
    }
    properties.set("OfxParamPropDefault", control.default_value[0]);
    if (control.kind == NEVREL_SLIDER) {
        for (const char* name : {"OfxParamPropMin", "OfxParamPropDisplayMin"})
            properties.set(name, control.minimum);
        for (const char* name : {"OfxParamPropMax", "OfxParamPropDisplayMax"})
            properties.set(name, control.maximum);
    }
    return properties.status;
}

int FromUnit(double unit, int full) {
    const double inside = unit > 0 ? std::min(unit, 1.0) : 0;  // 0 for what is no number
    return static_cast<int>(std::lround(inside * full));
}

ofx::Status ReadControl(ofx::ParameterSet set, double time, const nevrel_control& control,
                        std::int32_t* fields) {
    ofx::Parameter parameter = nullptr;
    ofx::Status status = suites.parameters->paramGetHandle(set, control.key, &parameter, nullptr);
    if (status != ofx::ok) return status;
    const auto getValue = suites.parameters->paramGetValueAtTime;
    if (control.kind == NEVREL_COLOR) {
        double color[3]{};
        status = getValue(parameter, time, &color[0], &color[1], &color[2]);
        for (int i = 0; i < 3; ++i) fields[i] = FromUnit(color[i], control.maximum);
    } else {
        int value = 0;
        status = getValue(parameter, time, &value);
        *fields = std::clamp(value, control.minimum, control.maximum);
    }
    return status;
}

}  // namespace

ofx::Status DefineControls(ofx::Effect effect) {
    ofx::ParameterSet set = nullptr;
    ofx::Status status = suites.effects->getParamSet(effect, &set);
    bool inGroup = false;
    for (std::size_t i = 0; status == ofx::ok && i < nevrel_control_count(); ++i) {
        const nevrel_control& control = *nevrel_control_at(i);
        if (control.in_key_group != 0 && !inGroup) {
            inGroup = true;
            status = Define(set, "OfxParamTypeGroup", groupKey, groupName).status;
        }
        if (status == ofx::ok) status = DefineControl(set, control);
    }
    return status;
}

ofx::Status ReadControls(ofx::Effect effect, double time, nevrel_settings& settings) {
    nevrel_settings_init(&settings, sizeof settings);
    ofx::ParameterSet set = nullptr;
    ofx::Status status = suites.effects->getParamSet(effect, &set);
    for (std::size_t i = 0; status == ofx::ok && i < nevrel_control_count(); ++i) {
        const nevrel_control& control = *nevrel_control_at(i);
        status = ReadControl(set, time, control, FieldsOf(control, settings));
    }
    return status;
}
