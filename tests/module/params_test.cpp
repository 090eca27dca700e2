// The controls as they are declared, and their state.
#include <regex>
#include <span>
#include <sstream>
#include <tuple>

#include "tests/module/session.h"

using namespace host_kit;

namespace {

/// The controls, a line for each: type, id, name, flags and UI flags, and the ranges of a slider.
/// Their initial values, which are their defaults too.
struct Listing {
    explicit Listing(const Session& session) {
        for (const PF_ParamDef& def : std::span(session.effect.declared()).subspan(1)) {
            controls << def.param_type << ' ' << def.uu.id << " '"
                     << (def.param_type == PF_Param_GROUP_END ? "" : def.name) << "' flags "
                     << def.flags << " ui " << def.ui_flags << ' ' << def.ui_width << ' '
                     << def.ui_height;
            const auto& [slider, box, color] = std::tie(def.u.sd, def.u.bd, def.u.cd);
            if (def.param_type == PF_Param_SLIDER) {
                controls << ": " << slider.valid_min << " to " << slider.valid_max << ", slider "
                         << slider.slider_min << " to " << slider.slider_max << slider.value_str
                         << slider.value_desc;
                values << slider.value << ' ';
                EXPECT_EQ(slider.dephault, slider.value);
            } else if (def.param_type == PF_Param_CHECKBOX) {
                controls << box.u.nameptr;
                values << box.value << ' ';
                EXPECT_EQ(box.dephault, box.value);
            } else if (def.param_type == PF_Param_COLOR) {
                const PF_Pixel& v = color.value;
                values << +v.alpha << ',' << +v.red << ',' << +v.green << ',' << +v.blue << ' ';
                EXPECT_EQ(std::memcmp(&color.dephault, &v, sizeof v), 0);
            }
            controls << '\n';
        }
    }
    std::ostringstream controls, values;
};

constexpr char parameterSet[] =
    R"(1 1 'color threshold' flags 32 ui 0 0 0: 1 to 255, slider 1 to 255
1 2 'softness' flags 32 ui 0 0 0: 0 to 100, slider 0 to 100
1 7 'bias' flags 32 ui 0 0 0: 0 to 100, slider 0 to 100
13 1000 'color key' flags 0 ui 0 0 0
4 3 'color key enable' flags 96 ui 0 0 0
5 4 'key color' flags 32 ui 0 0 0
1 5 'key color threshold' flags 32 ui 0 0 0: 0 to 255, slider 0 to 255
4 6 'invert' flags 32 ui 0 0 0
14 1001 '' flags 32 ui 0 0 0
)";
constexpr char builtIn[] = "10 70 0 0 255,255,255,255 0 0 ";

/// Numbers beyond the controls' ranges are the host's to deal with; of a colour the low byte
/// counts.
constexpr char stored[] =
    "[defaults]\nColorThreshold=300\nSoftness=0\nBias=-3\nColorkeyEnable=1\nKeycolorR=256\n"
    "KeycolorG=7\nKeycolorB=-1\nColorkeyThreshold=9\nColorkeyInvert=1\n";
constexpr char fromFile[] = "300 0 -3 1 255,0,7,255 9 1 ";

TEST(ParamsSetup, DeclaresTheControls) {
    const HostIdentity old{PF_AppID_AfterEffects, {12, 11}};
    const HostIdentity older{PF_AppID_AfterEffects, {11, 99}};
    const HostIdentity recent{PF_AppID_AfterEffects, {12, 12}};
    const HostIdentity oldPremiere{PF_AppID_Premiere, {12, 11}, true};
    const HostIdentity engine{PF_AppID_AfterEffects, {13, 0}, true};
    const struct {
        HostIdentity identity;
        std::string ini;
        const char* values;
        const char* uiFlags = " ui 0";
    } cases[] = {{recent, {}, builtIn},           {recent, stored, fromFile},
                 {old, stored, builtIn},          {older, stored, builtIn},
                 {oldPremiere, stored, fromFile}, {engine, stored, fromFile, " ui 32"}};
    for (const auto& c : cases) {
        std::string expected = std::regex_replace(parameterSet, std::regex(" ui 0"), c.uiFlags);
        for (const std::string layout : {"", flatLayout}) {
            const Listing listing(Session(c.ini + layout, c.identity));
            EXPECT_EQ(listing.controls.str(), expected);
            EXPECT_EQ(listing.values.str(), c.values);
            expected = std::regex_replace(expected, std::regex("1[34] 100.*\n"), "");
        }
    }
    EXPECT_EQ(Session().effect.paramsSetup().out.num_params, 10);
    EXPECT_EQ(Session(flatLayout).effect.paramsSetup().out.num_params, 8);
}

/// The controls that a UI command updates, in order: ids, and the UI flags that each then has.
std::string Updates(Session& session, Instance& instance, bool userChanged) {
    session.host.calls.record(true);
    EXPECT_TRUE((userChanged ? instance.userChangedParam() : instance.updateParamsUi()).ok());
    std::ostringstream updates;
    for (const A_long index : session.recordedNumbers(HostCall::UpdateParamUi)) {
        const A_long id = session.effect.declared()[static_cast<std::size_t>(index)].uu.id;
        updates << std::dec << id << std::hex << ':' << instance.param(id).ui_flags << ' ';
    }
    return updates.str();
}

TEST(UpdateParamsUi, KeyControlsFollowTheirSwitch) {
    for (const bool grouped : {true, false}) {
        Session session(grouped ? "" : flatLayout);
        Instance instance(session.effect);
        for (const PF_ParamIndex index : grouped ? std::vector{5, 6} : std::vector{4, 5}) {
            PF_ParamDef def = session.effect.declared()[static_cast<std::size_t>(index)];
            // A flag of the host's: the colour keeps it, the separator replaces it.
            def.ui_flags = 0x100;
            ASSERT_TRUE(instance.updateControl(index, def));
        }
        std::string separator = grouped ? "" : "3:10 ";
        for (const bool on : {false, true, false}) {
            for (const bool userChanged : {false, true}) {
                instance.setCheckbox(idKeyEnable, on);
                EXPECT_EQ(Updates(session, instance, userChanged),
                          separator + (on ? "4:100 5:0 6:0 " : "4:120 5:20 6:20 "));
                separator.clear();
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
        const std::string all = "1:20 2:20 3:20 4:20 5:20 6:20 7:20 ";
        const std::string expected = grouped ? all + "1000:20 1001:20 " : all;
        for (int i = 0; i < 2; ++i) EXPECT_EQ(Updates(session, instance, false), expected);
        session.host.calls.inject({.call = HostCall::UpdateParamUi, .fromThereOn = true});
        EXPECT_EQ(Updates(session, instance, false), expected)
            << "a refused update stops none of the others";
        session.host.calls.clearFault();
    }
}

}  // namespace
