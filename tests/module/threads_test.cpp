// Frames of different depths and values on eight threads, while other commands arrive on one more.
#include <atomic>
#include <cstdlib>
#include <thread>

#include "tests/module/session.h"
#include "tests/module/start_line.h"

using namespace host_kit;

namespace {

constexpr int kRenderers = 8;
constexpr int kFrames = 12;
constexpr int kRounds = 10;

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
        Picture output(input_.format(), true);
        EXPECT_TRUE(
            (smart_ ? SmartRender(instance_, input_, output) : instance_.render(input_, output))
                .ok());
        return output.pixels();
    }

  private:
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
    for (const std::string layout : {"", kFlatLayout}) {
        std::vector<std::vector<char>> expected;
        for (int number = 0; number < kRenderers; ++number)
            expected.push_back(RenderAlone(layout, number));
        for (int round = 0; round < kRounds; ++round) {
            Session session(layout);
            std::atomic<int> rendering = kRenderers;
            StartLine start(kRenderers + 1);
            std::vector<std::thread> threads;
            for (int number = 0; number < kRenderers; ++number) {
                threads.emplace_back([&, number] {
                    Renderer renderer(session, number);
                    start.arriveAndWait();
                    for (int frame = 0; frame < kFrames; ++frame)
                        EXPECT_EQ(renderer.render(), expected[static_cast<std::size_t>(number)])
                            << number;
                    --rendering;
                });
            }
            start.arriveAndWait();
            while (rendering > 0) SendOtherCommands(session);
            for (std::thread& thread : threads) thread.join();
        }
    }
}

// The address sanitizer and Wine start processes slowly.
#if defined(__SANITIZE_ADDRESS__)
constexpr int kProcesses = 60;
#elif defined(_WIN32)
constexpr int kProcesses = 300;
#else
constexpr int kProcesses = 1000;
#endif

/// Its status. Wine now and then fails to start a process or loses it at once; the shell's status
/// for that is no one of the program's own.
int RunProcess(const std::string& command) {
    int status = std::system(command.c_str());
#ifdef _WIN32
    constexpr int kNotStarted = 9009, kLost = 1;
    for (int more = 3; more > 0 && (status == kNotStarted || status == kLost); --more)
        status = std::system(command.c_str());
#endif
    return status;
}

/// Each process uses the language and the layout for the first time, on several threads at once.
TEST(Threads, FreshProcessesChooseOnce) {
    const TempFolder folder;
    WriteText(folder.file("flat.ini"), kFlatLayout);
    for (int number = 0; number < kProcesses; ++number) {
        const bool flat = number % 2 != 0, japanese = number % 4 > 1;
        const std::string command = std::string(FIRST_USE) + " " +
                                    folder.file(flat ? "flat.so" : "grouped.so") +
                                    (japanese ? " -L JP" : " -L EN");
        ASSERT_EQ(RunProcess(command), 0) << command;
    }
}

}  // namespace
