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

/// Counts the commands of a host and their calls, and prints a line for each kind of command.
class Tally {
  public:
    Tally(Session& session, const char* profile) : session_(session), profile_(profile) {}

    template <typename Send>
    void add(const char* command, const Send& send) {
        const std::uint64_t commands = session_.host.commands;
        session_.host.calls.resetCount();
        send();
        std::printf("%-16s %-18s %6llu commands %7d calls\n", profile_, command,
                    static_cast<unsigned long long>(session_.host.commands - commands),
                    session_.host.calls.count());
        EXPECT_EQ(session_.host.accounts.complaints(), "") << profile_ << ", " << command;
    }

  private:
    Session& session_;
    const char* profile_;
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

    Tally tally(session, profile.name);
    tally.add("about", [&] { EXPECT_TRUE(session.effect.about().ok()); });
    tally.add("global set-up", [&] { EXPECT_TRUE(Effect(session.effect).globalSetup().ok()); });
    tally.add("parameter set-up", [&] { EXPECT_TRUE(Effect(session.effect).paramsSetup().ok()); });
    Instance other(session.effect);
    tally.add("sequence set-up", [&] { EXPECT_TRUE(other.sequenceSetup().ok()); });
    tally.add("flatten", [&] { EXPECT_TRUE(other.sequenceFlatten(flat).ok()); });
    tally.add("flattened copy", [&] {
        std::vector<std::byte> copy;
        EXPECT_TRUE(instance.flattenedCopy(copy).ok());
        EXPECT_EQ(copy.size(), ForMultiFrame() ? 4U : 0U);
    });
    tally.add("re-set-up", [&] { EXPECT_TRUE(other.sequenceResetup(flat).ok()); });
#ifndef _WIN32  // where a dialog opens and waits
    tally.add("options", [&] { EXPECT_TRUE(instance.doDialog().ok()); });
#endif
    tally.add("UI update", [&] { EXPECT_TRUE(instance.updateParamsUi().ok()); });
    tally.add("changed parameter", [&] { EXPECT_TRUE(instance.userChangedParam().ok()); });
    tally.add("render", [&] { RenderAll(profile, instance, false); });
    if (profile.rendersSmartly)
        tally.add("smart render", [&] { RenderAll(profile, instance, true); });
    tally.add("set-down", [&] { EXPECT_TRUE(other.sequenceSetdown().ok()); });
    session.host.meanwhile = nullptr;
}

INSTANTIATE_TEST_SUITE_P(, Profiles, testing::ValuesIn(profiles));

}  // namespace
