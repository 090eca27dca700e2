// Every command of the module under hosts of each kind, with the number of commands and of the
// calls that they make; under the newest, other frames are rendered in the middle of each call.
#include <cstdio>

#include "tests/module/session.h"

using namespace host_kit;

namespace {

struct Profile {
    const char* name;
    A_long applId;
    PF_SpecVersion version;
    MultiFrameRules rules;
    bool rendersSmartly;  ///< the editor has no smart commands and no 16-bit images
};

constexpr Profile profiles[] = {
    {"older", PF_AppID_AfterEffects, {13, 0}, MultiFrameRules::Unknown, true},
    {"2022 and later", PF_AppID_AfterEffects, {13, 25}, MultiFrameRules::Enforced, true},
    {"editor", PF_AppID_Premiere, {13, 4}, MultiFrameRules::Unknown, false},
};

void RenderAll(const Profile& profile, Instance& instance, bool smart) {
    for (const PF_PixelFormat format :
         {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64, PF_PixelFormat_ARGB128}) {
        if (format == PF_PixelFormat_ARGB128 && !smart) continue;
        if (format != PF_PixelFormat_ARGB32 && !profile.rendersSmartly) continue;
        Picture input(format);
        Picture output(format, true);
        EXPECT_TRUE(
            (smart ? SmartRender(instance, input, output) : instance.render(input, output)).ok());
        EXPECT_EQ(output.pixels() == input.pixels(), !profile.rendersSmartly)
            << "the editor gets a copy";
    }
}

class Profiles : public testing::TestWithParam<Profile> {};

TEST_P(Profiles, ServeEveryCommand) {
    const Profile& profile = GetParam();
    Session session({}, HostNamed(profile.applId, profile.version));
    session.host.rules = profile.rules;
    EXPECT_TRUE(session.effect.globalSetup().ok());
    Instance instance(session.effect);
    std::vector<std::byte> flat;
    ASSERT_TRUE(instance.sequenceSetup().ok());
    Picture input(PF_PixelFormat_ARGB32);
    session.host.meanwhile = [&] {
        Picture output(PF_PixelFormat_ARGB32);
        EXPECT_TRUE(SmartRender(instance, input, output).ok());
    };

    // Sends commands and prints how many they and their calls are.
    const auto tell = [&](const char* command, const auto& send) {
        const std::uint64_t commands = session.host.commands;
        session.host.calls.resetCount();
        send();
        std::printf("%-16s %-18s %6llu commands %7d calls\n", profile.name, command,
                    static_cast<unsigned long long>(session.host.commands - commands),
                    session.host.calls.count());
        EXPECT_EQ(session.host.accounts.complaints(), "") << profile.name << ", " << command;
    };
    tell("about", [&] { EXPECT_TRUE(session.effect.about().ok()); });
    tell("global set-up", [&] { EXPECT_TRUE(Effect(session.effect).globalSetup().ok()); });
    tell("parameter set-up", [&] { EXPECT_TRUE(Effect(session.effect).paramsSetup().ok()); });
    Instance other(session.effect);
    tell("sequence set-up", [&] { EXPECT_TRUE(other.sequenceSetup().ok()); });
    tell("flatten", [&] { EXPECT_TRUE(other.sequenceFlatten(flat).ok()); });
    tell("flattened copy", [&] {
        std::vector<std::byte> copy;
        EXPECT_TRUE(instance.flattenedCopy(copy).ok());
        EXPECT_EQ(copy.size(), ForMultiFrame() ? 4U : 0U);
    });
    tell("re-set-up", [&] { EXPECT_TRUE(other.sequenceResetup(flat).ok()); });
#ifndef _WIN32  // where a dialog opens and waits
    tell("options", [&] { EXPECT_TRUE(instance.doDialog().ok()); });
#endif
    tell("UI update", [&] { EXPECT_TRUE(instance.updateParamsUi().ok()); });
    tell("changed parameter", [&] { EXPECT_TRUE(instance.userChangedParam().ok()); });
    tell("render", [&] { RenderAll(profile, instance, false); });
    if (profile.rendersSmartly) tell("smart render", [&] { RenderAll(profile, instance, true); });
    tell("set-down", [&] { EXPECT_TRUE(other.sequenceSetdown().ok()); });
    session.host.meanwhile = nullptr;
}

INSTANTIATE_TEST_SUITE_P(, Profiles, testing::ValuesIn(profiles));

}  // namespace
