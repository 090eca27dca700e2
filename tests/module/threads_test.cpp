// Frames on eight threads, of instances with depths and values of their own or of one instance,
// while other commands arrive on one more.
#include <atomic>
#include <deque>
#include <thread>

#include "tests/module/every_command.h"

using namespace host_kit;

namespace {

constexpr int renderers = 8;
constexpr int frames = 12;
constexpr int rounds = 10;

/// Renders at a depth and by a render command that belong to the number.
std::vector<char> Render(Instance& instance, int number) {
    Picture input(everyDepth[number % 3]), output(input.format(), true);
    const bool smart = number % 2 == 0 || number % 3 == 2;  // only smart commands render floats
    EXPECT_TRUE(
        (smart ? SmartRender(instance, input, output) : instance.render(input, output)).ok());
    return output.pixels();
}

/// What the module throws inside itself for want of a basic suite.
PF_Err ThrownCode(const Session& session) {
    PF_InData in{};
    PF_OutData out{};
    return session.module.entryPoint()(PF_Cmd_GLOBAL_SETUP, &in, &out, nullptr, nullptr, nullptr);
}

/// One instance for each renderer, or one for all.
std::deque<Instance> MakeInstances(const Session& session, bool oneForAll) {
    std::deque<Instance> instances;
    for (int number = 0; number < (oneForAll ? 1 : renderers); ++number) {
        Instance& instance = instances.emplace_back(session.effect);
        EXPECT_TRUE(instance.sequenceSetup().ok());
        SetControls(instance, {5 + number, 30 + 10 * number, 12 * number, number % 4 / 2, 0, 255, 0,
                               0, number % 4 / 3});
    }
    return instances;
}

/// What comes on a host's main thread, where `rendered` is being rendered.
void SendOtherCommands(Session& session, Instance& rendered) {
    Stage stage(session);
    for (const ModuleCommand& command : everyCommand)
        EXPECT_TRUE(command.run(stage).ok()) << command.name;
    EXPECT_TRUE(rendered.updateParamsUi().ok());
    EXPECT_TRUE(rendered.flattenedCopy(stage.record).ok());
}

void RenderOnThreads(const std::string& layout, bool oneForAll) {
    std::vector<std::vector<char>> expected;
    for (int number = 0; number < renderers; ++number) {
        const Session session(layout);
        auto instances = MakeInstances(session, oneForAll);
        expected.push_back(Render(instances[oneForAll ? 0 : number], number));
    }
    for (int round = 0; round < rounds; ++round) {
        Session session(layout);
        auto instances = MakeInstances(session, oneForAll);
        std::atomic<int> rendering = renderers;
        std::atomic<int> missing = renderers + 1;
        const auto arriveAndWait = [&missing] {  // so that all go at the same moment
            --missing;
            while (missing > 0) std::this_thread::yield();  // no sleep: under Wine some never end
        };
        std::vector<std::thread> threads;
        for (int number = 0; number < renderers; ++number) {
            threads.emplace_back([&, number] {
                arriveAndWait();
                for (int frame = 0; frame < frames; ++frame) {
                    EXPECT_EQ(ThrownCode(session), PF_Err_BAD_CALLBACK_PARAM);
                    EXPECT_EQ(Render(instances[oneForAll ? 0 : number], number), expected[number])
                        << number;
                }
                --rendering;
            });
        }
        arriveAndWait();
        while (rendering > 0) SendOtherCommands(session, instances.front());
        for (std::thread& thread : threads) thread.join();
    }
}

TEST(Threads, RenderWhatOneThreadRenders) {
    for (const std::string layout : {"", flatLayout})
        for (const bool oneForAll : {false, true}) RenderOnThreads(layout, oneForAll);
}

}  // namespace
