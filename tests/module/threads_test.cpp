// Frames of different depths and values on eight threads, while other commands arrive on one more.
#include <atomic>
#include <thread>

#include "tests/module/session.h"

using namespace host_kit;

namespace {

constexpr int renderers = 8;
constexpr int frames = 12;
constexpr int rounds = 10;

/// An instance with values, a depth and a render command of its own.
class Renderer {
  public:
    Renderer(const Session& session, int number)
        : instance_(session.effect),
          input_(number % 3 == 0   ? PF_PixelFormat_ARGB32
                 : number % 3 == 1 ? PF_PixelFormat_ARGB64
                                   : PF_PixelFormat_ARGB128),
          smart_(number % 2 == 0 || number % 3 == 2) {  // only the smart commands render floats
        SetControls(instance_, {5 + number, 30 + 10 * number, 12 * number, number % 4 / 2, 0, 255,
                                0, 0, number % 4 / 3});
    }

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

    Instance instance_;
    Picture input_;
    bool smart_;
};

std::vector<char> RenderAlone(const std::string& layout, int number) {
    const Session session(layout);
    return Renderer(session, number).render();
}

/// What comes on a host's main thread.
void SendOtherCommands(const Session& session) {
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
}

TEST(Threads, RenderWhatOneThreadRenders) {
    for (const std::string layout : {"", flatLayout}) {
        std::vector<std::vector<char>> expected;
        for (int number = 0; number < renderers; ++number)
            expected.push_back(RenderAlone(layout, number));
        for (int round = 0; round < rounds; ++round) {
            Session session(layout);
            std::atomic<int> rendering = renderers;
            std::atomic<int> missing = renderers + 1;
            const auto arriveAndWait = [&missing] {
                --missing;
                while (missing > 0) std::this_thread::yield();  // so that all go at the same moment
            };
            std::vector<std::thread> threads;
            for (int number = 0; number < renderers; ++number) {
                threads.emplace_back([&, number] {
                    Renderer renderer(session, number);
                    arriveAndWait();
                    for (int frame = 0; frame < frames; ++frame)
                        EXPECT_EQ(renderer.render(), expected[static_cast<std::size_t>(number)])
                            << number;
                    --rendering;
                });
            }
            arriveAndWait();
            while (rendering > 0) SendOtherCommands(session);
            for (std::thread& thread : threads) thread.join();
        }
    }
}

}  // namespace
