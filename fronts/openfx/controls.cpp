#include "fronts/openfx/controls.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "capi/unit_scale.h"
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
    Require(suites.parameters->paramDefine(set, type, key, &properties.handle));
    properties.set("OfxPropLabel", name);
    return properties;
}

void DefineControl(ofx::ParameterSet set, const nevrel_control& control) {
    const Properties properties = Define(set, TypeOf(control.kind), control.key, control.name);
    properties.set("OfxParamPropHint", control.description);
    properties.set("OfxParamPropAnimates", 1);
    if (control.in_key_group != 0) properties.set("OfxParamPropParent", groupKey);
    if (control.kind == NEVREL_COLOR) {
        for (int i = 0; i < 3; ++i) {
            const double unit = static_cast<double>(control.default_value[i]) / control.maximum;
            properties.set("OfxParamPropDefault", unit, i);
        }
        return;
    }
    properties.set("OfxParamPropDefault", control.default_value[0]);
    if (control.kind != NEVREL_SLIDER) return;
    for (const char* name : {"OfxParamPropMin", "OfxParamPropDisplayMin"})
        properties.set(name, control.minimum);
    for (const char* name : {"OfxParamPropMax", "OfxParamPropDisplayMax"})
        properties.set(name, control.maximum);
}

void ReadControl(ofx::ParameterSet set, double time, const nevrel_control& control,
                 std::int32_t* fields) {
    ofx::Parameter parameter = nullptr;
    Require(suites.parameters->paramGetHandle(set, control.key, &parameter, nullptr));
    const auto getValue = suites.parameters->paramGetValueAtTime;
    if (control.kind == NEVREL_COLOR) {
        double color[3]{};
        Require(getValue(parameter, time, &color[0], &color[1], &color[2]));
        for (int i = 0; i < 3; ++i)
            fields[i] = WholeFromUnit<std::int32_t>(color[i], control.maximum);
    } else {
        int value = 0;
        Require(getValue(parameter, time, &value));
        *fields = std::clamp(value, control.minimum, control.maximum);
    }
}

ofx::ParameterSet ParametersOf(ofx::Effect effect) {
    ofx::ParameterSet set = nullptr;
    Require(suites.effects->getParamSet(effect, &set));
    return set;
}

}  // namespace

void DefineControls(ofx::Effect effect) {
    const ofx::ParameterSet set = ParametersOf(effect);
    bool inGroup = false;
    for (std::size_t i = 0; i < nevrel_control_count(); ++i) {
        const nevrel_control& control = *nevrel_control_at(i);
        if (control.in_key_group != 0 && !inGroup) {
            inGroup = true;
            Define(set, "OfxParamTypeGroup", groupKey, groupName);
        }
        DefineControl(set, control);
    }
}

nevrel_settings ReadControls(ofx::Effect effect, double time) {
    nevrel_settings settings;
    nevrel_settings_init(&settings, sizeof settings);
    const ofx::ParameterSet set = ParametersOf(effect);
    for (std::size_t i = 0; i < nevrel_control_count(); ++i) {
        const nevrel_control& control = *nevrel_control_at(i);
        ReadControl(set, time, control, FieldsOf(control, settings));
    }
    return settings;
}
