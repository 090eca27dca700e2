// Every command of the module under hosts of each kind, with the number of commands and of the
// calls that they make; under the newest, other frames are rendered in the middle of each call.
#include <cstdio>

#include "tests/module/every_command.h"

using namespace host_kit;

namespace {

const struct {
    const char* name;
    HostIdentity identity;
    MultiFrameRules rules;
} profiles[] = {
    {"older", {PF_AppID_AfterEffects, {13, 0}}, MultiFrameRules::Unknown},
    {"2022 and later", {PF_AppID_AfterEffects, {13, 25}}, MultiFrameRules::Enforced},
    {"editor", {PF_AppID_Premiere, {13, 4}}, MultiFrameRules::Unknown},
};

TEST(Profiles, ServeEveryCommand) {
    for (const auto& profile : profiles) {
        Session session({}, profile.identity);
        session.host.rules = profile.rules;
        EXPECT_TRUE(session.effect.globalSetup().ok());
        const bool editor = profile.identity.applId == PF_AppID_Premiere;
        for (const ModuleCommand& command : everyCommand) {
            if (editor && command.run == PreRenderAndRender) continue;  // which it does not have
            std::uint64_t commands = 0;
            int calls = 0;
            for (const PF_PixelFormat depth : std::span(everyDepth).first(command.depths)) {
                Stage stage(session, depth);
                const std::vector<char> untouched = stage.output.pixels();
                session.host.meanwhile = [&stage, depth] {
                    Picture output(depth);
                    EXPECT_TRUE(SmartRender(stage.instance, stage.input, output).ok());
                };
                commands -= session.host.commands;
                session.host.calls.resetCount();
                EXPECT_TRUE(command.run(stage).ok()) << profile.name << ", " << command.name;
                session.host.meanwhile = nullptr;
                commands += session.host.commands;
                calls += session.host.calls.count();
                EXPECT_EQ(session.host.accounts.complaints(), "") << command.name;
                if (command.depths > 1) {
                    EXPECT_NE(stage.output.pixels(), untouched);
                    EXPECT_EQ(stage.output.pixels() == stage.input.pixels(), editor)
                        << "the editor gets a copy";
                }
            }
            std::printf("%-16s %-18s %6llu commands %7d calls\n", profile.name, command.name,
                        static_cast<unsigned long long>(commands), calls);
        }
    }
}

}  // namespace
