// The controls as they are declared, and their state.
#include <regex>
#include <sstream>
#include <tuple>

#include "tests/module/session.h"

using namespace host_kit;

namespace {

std::string Text(const PF_Pixel& color) {
    const A_u_char channels[] = {color.alpha, color.red, color.green, color.blue};
    std::string text;
    for (const A_u_char channel : channels) text += ' ' + std::to_string(channel);
    return text;
}

/// A line for each control: type, id, name, flags and UI flags, then what its type has.
std::string Listing(const std::vector<PF_ParamDef>& declared) {
    std::ostringstream out;
    for (std::size_t i = 1; i < declared.size(); ++i) {
        const PF_ParamDef& def = declared[i];
        out << def.param_type << " id " << def.uu.id << " '"
            << (def.param_type == PF_Param_GROUP_END ? "" : def.name) << "' flags " << def.flags
            << " ui " << def.ui_flags << ' ' << def.ui_width << ' ' << def.ui_height;
        const auto& [slider, box, color] = std::tie(def.u.sd, def.u.bd, def.u.cd);
        if (def.param_type == PF_Param_SLIDER) {
            out << ": " << slider.value << " default " << slider.dephault << ", "
                << slider.valid_min << " to " << slider.valid_max << ", slider "
                << slider.slider_min << " to " << slider.slider_max << slider.value_str
                << slider.value_desc;
        } else if (def.param_type == PF_Param_CHECKBOX) {
            out << ": " << box.value << " default " << int{box.dephault} << box.u.nameptr;
        } else if (def.param_type == PF_Param_COLOR) {
            out << ":" << Text(color.value) << " default" << Text(color.dephault);
        }
        out << '\n';
    }
    return out.str();
}

constexpr char builtIn[] =
    R"(1 id 1 'color threshold' flags 32 ui 0 0 0: 10 default 10, 1 to 255, slider 1 to 255
1 id 2 'softness' flags 32 ui 0 0 0: 70 default 70, 0 to 100, slider 0 to 100
1 id 7 'bias' flags 32 ui 0 0 0: 0 default 0, 0 to 100, slider 0 to 100
13 id 1000 'color key' flags 0 ui 0 0 0
4 id 3 'color key enable' flags 96 ui 0 0 0: 0 default 0
5 id 4 'key color' flags 32 ui 0 0 0: 255 255 255 255 default 255 255 255 255
1 id 5 'key color threshold' flags 32 ui 0 0 0: 0 default 0, 0 to 255, slider 0 to 255
4 id 6 'invert' flags 32 ui 0 0 0: 0 default 0
14 id 1001 '' flags 32 ui 0 0 0
)";

/// Numbers beyond the controls' ranges are the host's to deal with; of a colour the low byte
/// counts.
constexpr char stored[] = R"([defaults]
ColorThreshold=300
Softness=0
Bias=-3
ColorkeyEnable=1
KeycolorR=256
KeycolorG=7
KeycolorB=-1
ColorkeyThreshold=9
ColorkeyInvert=1
)";
constexpr char fromFile[] =
    R"(1 id 1 'color threshold' flags 32 ui 0 0 0: 300 default 300, 1 to 255, slider 1 to 255
1 id 2 'softness' flags 32 ui 0 0 0: 0 default 0, 0 to 100, slider 0 to 100
1 id 7 'bias' flags 32 ui 0 0 0: -3 default -3, 0 to 100, slider 0 to 100
13 id 1000 'color key' flags 0 ui 0 0 0
4 id 3 'color key enable' flags 96 ui 0 0 0: 1 default 1
5 id 4 'key color' flags 32 ui 0 0 0: 255 0 7 255 default 255 0 7 255
1 id 5 'key color threshold' flags 32 ui 0 0 0: 9 default 9, 0 to 255, slider 0 to 255
4 id 6 'invert' flags 32 ui 0 0 0: 1 default 1
14 id 1001 '' flags 32 ui 0 0 0
)";

TEST(ParamsSetup, DeclaresTheControls) {
    const HostIdentity old = HostNamed(PF_AppID_AfterEffects, {12, 11});
    const HostIdentity older = HostNamed(PF_AppID_AfterEffects, {11, 99});
    const HostIdentity recent = HostNamed(PF_AppID_AfterEffects, {12, 12});
    const HostIdentity oldPremiere = HostNamed(PF_AppID_Premiere, {12, 11}, true);
    const HostIdentity engine = HostNamed(PF_AppID_AfterEffects, {13, 0}, true);
    const struct {
        HostIdentity identity;
        std::string ini;
        std::string expected;
        const char* uiFlags = " ui 0";
    } cases[] = {{recent, {}, builtIn},           {recent, stored, fromFile},
                 {old, stored, builtIn},          {older, stored, builtIn},
                 {oldPremiere, stored, fromFile}, {engine, stored, fromFile, " ui 32"}};
    for (const auto& c : cases) {
        std::string expected = std::regex_replace(c.expected, std::regex(" ui 0"), c.uiFlags);
        const Session grouped(c.ini, c.identity);
        EXPECT_EQ(Listing(grouped.effect.declared()), expected);
        expected = std::regex_replace(expected, std::regex("1[34] id .*\n"), "");
        const Session flat(c.ini + flatLayout, c.identity);
        EXPECT_EQ(Listing(flat.effect.declared()), expected);
    }
    EXPECT_EQ(Session().effect.paramsSetup().out.num_params, 10);
    EXPECT_EQ(Session(flatLayout).effect.paramsSetup().out.num_params, 8);
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
        Session session(grouped ? "" : flatLayout);
        Instance instance(session.effect);
        for (const PF_ParamIndex index : grouped ? std::vector{6} : std::vector{4, 5}) {
            PF_ParamDef def = session.effect.declared()[static_cast<std::size_t>(index)];
            def.ui_flags =
                0x100;  // a flag of the host's: the colour keeps it, the separator replaces it
            ASSERT_TRUE(instance.updateControl(index, def));
        }
        const std::vector<A_long> keyControls{idKeyColor, idKeyThreshold, idKeyInvert};
        for (const bool on : {false, true, false}) {
            for (const bool userChanged : {false, true}) {
                instance.setCheckbox(idKeyEnable, on);
                const bool first = instance.param(idKeyEnable).ui_flags == 0x100;
                std::vector<A_long> expected = keyControls;
                if (first) expected.insert(expected.begin(), idKeyEnable);
                EXPECT_EQ(Updates(session, instance, userChanged), expected);
                EXPECT_EQ(instance.param(idKeyColor).ui_flags, on ? 0x100 : 0x120);
                EXPECT_EQ(instance.param(idKeyThreshold).ui_flags, on ? 0 : PF_PUI_DISABLED);
                EXPECT_EQ(instance.param(idKeyInvert).ui_flags, on ? 0 : PF_PUI_DISABLED);
                EXPECT_EQ(instance.param(idKeyEnable).ui_flags, grouped ? 0 : PF_PUI_ECW_SEPARATOR);
                EXPECT_EQ(instance.param(idSoftness).ui_flags, 0);
            }
        }
    }
}

TEST(UpdateParamsUi, ARenderEngineHasEverythingDisabled) {
    for (const bool grouped : {true, false}) {
        Session session(grouped ? "" : flatLayout);
        session.host.identity.renderEngine = true;  // only now, so that the controls start enabled
        Instance instance(session.effect);
        instance.setCheckbox(idKeyEnable, true);
        std::vector<A_long> order{idThreshold,    idSoftness,  idKeyEnable, idKeyColor,
                                  idKeyThreshold, idKeyInvert, idBias};
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
