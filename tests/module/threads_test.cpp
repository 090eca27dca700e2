// Frames on eight threads, of instances with depths and values of their own or of one instance,
// while other commands arrive on one more.
#include <atomic>
#include <deque>
#include <thread>

#include "tests/module/session.h"

using namespace host_kit;

namespace {

constexpr int renderers = 8;
constexpr int frames = 12;
constexpr int rounds = 10;

PF_PixelFormat FormatOf(int number) {
    constexpr PF_PixelFormat formats[] = {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64,
                                          PF_PixelFormat_ARGB128};
    return formats[number % 3];
}

/// Renders one instance, at a depth and by a render command of its own.
class Renderer {
  public:
    Renderer(Instance& instance, int number)
        : instance_(instance),
          input_(FormatOf(number)),
          smart_(number % 2 == 0 || number % 3 == 2) {}  // only the smart commands render floats

    std::vector<char> render() {
        EXPECT_EQ(thrownCode(), PF_Err_BAD_CALLBACK_PARAM);
        Picture output(input_.format(), true);
        EXPECT_TRUE(
            (smart_ ? SmartRender(instance_, input_, output) : instance_.render(input_, output))
                .ok());
        return output.pixels();
    }

  private:
    /// What the module throws inside itself for want of a basic suite.
    [[nodiscard]] PF_Err thrownCode() const {
        PF_InData in{};
        PF_OutData out{};
        return instance_.effect().entryPoint()(PF_Cmd_GLOBAL_SETUP, &in, &out, nullptr, nullptr,
                                               nullptr);
    }

    Instance& instance_;
    Picture input_;
    bool smart_;
};

/// The instances of a session: one for each renderer, or one for all.
class Instances {
  public:
    Instances(const Session& session, bool oneForAll) {
        for (int number = 0; number < (oneForAll ? 1 : renderers); ++number) {
            Instance& instance = instances_.emplace_back(session.effect);
            EXPECT_TRUE(instance.sequenceSetup().ok());
            SetControls(instance, {5 + number, 30 + 10 * number, 12 * number, number % 4 / 2, 0,
                                   255, 0, 0, number % 4 / 3});
        }
    }

    Instance& of(int number) {
        return instances_[static_cast<std::size_t>(number) % instances_.size()];
    }

  private:
    std::deque<Instance> instances_;
};

std::vector<char> RenderAlone(const std::string& layout, bool oneForAll, int number) {
    const Session session(layout);
    Instances instances(session, oneForAll);
    return Renderer(instances.of(number), number).render();
}

/// What comes on a host's main thread, where `rendered` is being rendered.
void SendOtherCommands(const Session& session, Instance& rendered) {
    EXPECT_TRUE(session.effect.about().ok());
    EXPECT_TRUE(session.effect.send(PF_Cmd_GLOBAL_SETUP).ok());
    EXPECT_TRUE(Effect(session.effect).paramsSetup().ok());
    Instance instance(session.effect);
    std::vector<std::byte> flat;
    EXPECT_TRUE(instance.sequenceSetup().ok());
    EXPECT_TRUE(instance.sequenceFlatten(flat).ok());
    EXPECT_TRUE(instance.sequenceResetup(flat).ok());
    EXPECT_TRUE(instance.updateParamsUi().ok());
    EXPECT_TRUE(instance.userChangedParam().ok());
    EXPECT_TRUE(rendered.updateParamsUi().ok());
    if (ForMultiFrame()) {
        EXPECT_TRUE(rendered.flattenedCopy(flat).ok());
        EXPECT_EQ(flat.size(), 4U);
    }
}

void RenderOnThreads(const std::string& layout, bool oneForAll) {
    std::vector<std::vector<char>> expected;
    for (int number = 0; number < renderers; ++number)
        expected.push_back(RenderAlone(layout, oneForAll, number));
    for (int round = 0; round < rounds; ++round) {
        Session session(layout);
        Instances instances(session, oneForAll);
        std::atomic<int> rendering = renderers;
        std::atomic<int> missing = renderers + 1;
        const auto arriveAndWait = [&missing] {
            --missing;
            while (missing > 0) std::this_thread::yield();  // so that all go at the same moment
        };
        std::vector<std::thread> threads;
        for (int number = 0; number < renderers; ++number) {
            threads.emplace_back([&, number] {
                Renderer renderer(instances.of(number), number);
                arriveAndWait();
                for (int frame = 0; frame < frames; ++frame)
                    EXPECT_EQ(renderer.render(), expected[static_cast<std::size_t>(number)])
                        << number;
                --rendering;
            });
        }
        arriveAndWait();
        while (rendering > 0) SendOtherCommands(session, instances.of(0));
        for (std::thread& thread : threads) thread.join();
    }
}

TEST(Threads, RenderWhatOneThreadRenders) {
    for (const std::string layout : {"", flatLayout}) {
        for (const bool oneForAll : {false, true}) RenderOnThreads(layout, oneForAll);
    }
}

}  // namespace
