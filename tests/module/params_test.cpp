// The controls as they are declared, and their state.
#include <optional>

#include "tests/module/session.h"

using namespace host_kit;

namespace {

/// What a control's declaration has to hold; what does not apply to its type is left out.
struct Control {
    A_long id;
    PF_ParamType type;
    const char* name;
    A_long flags;
    A_long value = 0;
    A_long min = 0, max = 0;
    PF_Pixel color{};
};

struct Defaults {
    A_long threshold = 10, softness = 70, bias = 0, enable = 0;
    PF_Pixel color{255, 255, 255, 255};
    A_long keyThreshold = 0, invert = 0;
};

std::vector<Control> Expected(const Defaults& d, bool grouped) {
    std::vector<Control> controls{{kThreshold, 1, "color threshold", 0x20, d.threshold, 1, 255},
                                  {kSoftness, 1, "softness", 0x20, d.softness, 0, 100},
                                  {kBias, 1, "bias", 0x20, d.bias, 0, 100}};
    if (grouped) controls.push_back({1000, 13, "color key", 0});
    controls.push_back({kKeyEnable, 4, "color key enable", 0x60, d.enable});
    controls.push_back({kKeyColor, 5, "key color", 0x20, 0, 0, 0, d.color});
    controls.push_back({kKeyThreshold, 1, "key color threshold", 0x20, d.keyThreshold, 0, 255});
    controls.push_back({kKeyInvert, 4, "invert", 0x20, d.invert});
    if (grouped) controls.push_back({1001, 14, nullptr, 0x20});
    return controls;
}

bool SameColor(const PF_Pixel& a, const PF_Pixel& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

void ExpectControl(const PF_ParamDef& def, const Control& control, A_long uiFlags) {
    SCOPED_TRACE("control " + std::to_string(control.id));
    EXPECT_EQ(def.uu.id, control.id);
    EXPECT_EQ(def.param_type, control.type);
    if (control.type != PF_Param_GROUP_END) {
        EXPECT_STREQ(def.name, control.name);
    }
    EXPECT_EQ(def.flags, control.flags);
    EXPECT_EQ(def.ui_flags, uiFlags);
    EXPECT_EQ(def.ui_width, 0);
    EXPECT_EQ(def.ui_height, 0);
    if (control.type == PF_Param_SLIDER) {
        const PF_SliderDef& slider = def.u.sd;
        const std::vector<A_long> numbers{slider.value,      slider.dephault,  slider.valid_min,
                                          slider.slider_min, slider.valid_max, slider.slider_max};
        EXPECT_EQ(numbers, (std::vector<A_long>{control.value, control.value, control.min,
                                                control.min, control.max, control.max}));
        EXPECT_STREQ(slider.value_str, "");
        EXPECT_STREQ(slider.value_desc, "");
    } else if (control.type == PF_Param_CHECKBOX) {
        EXPECT_EQ(def.u.bd.value, control.value);
        EXPECT_EQ(def.u.bd.dephault, control.value);
        EXPECT_STREQ(def.u.bd.u.nameptr, "");
    } else if (control.type == PF_Param_COLOR) {
        EXPECT_TRUE(SameColor(def.u.cd.value, control.color));
        EXPECT_TRUE(SameColor(def.u.cd.dephault, control.color));
    }
}

TEST(ParamsSetup, DeclaresTheControls) {
    const std::string stored =
        "[defaults]\nColorThreshold=300\nSoftness=0\nBias=-3\nColorkeyEnable=1\nKeycolorR="
        "256\nKeycolorG=7\n"
        "KeycolorB=-1\nColorkeyThreshold=9\nColorkeyInvert=1\n";
    const Defaults own{300, 0, -3, 1, {255, 0, 7, 255}, 9, 1};
    const HostIdentity old = HostNamed(PF_AppID_AfterEffects, {12, 11});
    const HostIdentity older = HostNamed(PF_AppID_AfterEffects, {11, 99});
    const HostIdentity recent = HostNamed(PF_AppID_AfterEffects, {12, 12});
    const HostIdentity engine = HostNamed(PF_AppID_AfterEffects, {13, 0}, true);
    const HostIdentity oldPremiere = HostNamed(PF_AppID_Premiere, {12, 11}, true);
    const struct {
        HostIdentity identity;
        std::string ini;
        Defaults defaults;
        bool grouped;
    } cases[] = {
        {recent, {}, {}, true},
        {recent, kFlatLayout, {}, false},
        {recent, stored, own, true},
        {recent, stored + kFlatLayout, own, false},
        {old, stored, {}, true},
        {older, stored, {}, true},
        {old, stored + kFlatLayout, {}, false},
        {oldPremiere, stored, own, true},
        {engine, stored + kFlatLayout, own, false},
        {engine, {}, {}, true},
    };
    for (const auto& c : cases) {
        Session session(c.ini, c.identity);
        const std::vector<Control> expected = Expected(c.defaults, c.grouped);
        const std::vector<PF_ParamDef>& declared = session.effect.declared();
        ASSERT_EQ(declared.size(), expected.size() + 1);
        EXPECT_EQ(session.effect.paramsSetup().out.num_params, c.grouped ? 10 : 8);
        const bool disabled = c.identity.renderEngine && c.identity.applId == PF_AppID_AfterEffects;
        for (std::size_t i = 0; i < expected.size(); ++i) {
            ExpectControl(declared[i + 1], expected[i], disabled ? PF_PUI_DISABLED : 0);
        }
    }
}

/// The ids of the controls that a UI command updates, in order.
std::vector<A_long> Updates(Session& session, Instance& instance, bool userChanged) {
    session.host.calls.record(true);
    const CommandResult result =
        userChanged ? instance.userChangedParam() : instance.updateParamsUi();
    EXPECT_EQ(result.error, PF_Err_NONE);
    std::vector<A_long> ids;
    for (const HostCallRecord& call : session.host.calls.recorded()) {
        if (call.call == HostCall::UpdateParamUi) {
            ids.push_back(session.effect.declared()[static_cast<std::size_t>(call.number)].uu.id);
        }
    }
    return ids;
}

TEST(UpdateParamsUi, KeyControlsFollowTheirSwitch) {
    for (const bool grouped : {true, false}) {
        Session session(grouped ? "" : kFlatLayout);
        Instance instance(session.effect);
        for (const PF_ParamIndex index : grouped ? std::vector{6} : std::vector{4, 5}) {
            PF_ParamDef def = session.effect.declared()[static_cast<std::size_t>(index)];
            def.ui_flags =
                0x100;  // a flag of the host's: the colour keeps it, the separator replaces it
            ASSERT_TRUE(instance.updateControl(index, def));
        }
        const std::vector<A_long> keyControls{kKeyColor, kKeyThreshold, kKeyInvert};
        for (const bool on : {false, true, false}) {
            for (const bool userChanged : {false, true}) {
                instance.setCheckbox(kKeyEnable, on);
                const bool first = instance.param(kKeyEnable).ui_flags == 0x100;
                std::vector<A_long> expected = keyControls;
                if (first) expected.insert(expected.begin(), kKeyEnable);
                EXPECT_EQ(Updates(session, instance, userChanged), expected);
                EXPECT_EQ(instance.param(kKeyColor).ui_flags, on ? 0x100 : 0x120);
                EXPECT_EQ(instance.param(kKeyThreshold).ui_flags, on ? 0 : PF_PUI_DISABLED);
                EXPECT_EQ(instance.param(kKeyInvert).ui_flags, on ? 0 : PF_PUI_DISABLED);
                EXPECT_EQ(instance.param(kKeyEnable).ui_flags, grouped ? 0 : PF_PUI_ECW_SEPARATOR);
                EXPECT_EQ(instance.param(kSoftness).ui_flags, 0);
            }
        }
    }
}

TEST(UpdateParamsUi, ARenderEngineHasEverythingDisabled) {
    for (const bool grouped : {true, false}) {
        Session session(grouped ? "" : kFlatLayout);
        session.host.identity.renderEngine = true;  // only now, so that the controls start enabled
        Instance instance(session.effect);
        instance.setCheckbox(kKeyEnable, true);
        std::vector<A_long> order{kThreshold,    kSoftness,  kKeyEnable, kKeyColor,
                                  kKeyThreshold, kKeyInvert, kBias};
        if (grouped) order.insert(order.end(), {1000, 1001});
        for (int i = 0; i < 2; ++i) EXPECT_EQ(Updates(session, instance, false), order);
        for (const A_long id : order) EXPECT_EQ(instance.param(id).ui_flags, PF_PUI_DISABLED) << id;
        session.host.calls.inject({.call = HostCall::UpdateParamUi, .fromThereOn = true});
        EXPECT_EQ(Updates(session, instance, false), order)
            << "a refused update stops none of the others";
        session.host.calls.clearFault();
    }
}

}  // namespace
