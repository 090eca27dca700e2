// What is worth saying about a picture that did not fail.
#pragma once

#include <array>
#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace nevrel {

/// What is done to a picture, one after the other.
enum class Stage { Decode, Load, Kernel, Store, Encode, Check, Write };
inline constexpr std::array stageNames{"decode", "load",  "kernel", "store",
                                       "encode", "check", "write"};

/// Seconds that a picture took, by stage.
struct StageTimes {
    std::array<double, stageNames.size()> seconds{};

    /// Does the stage's work and adds the time that it took.
    template <typename StageWork>
    decltype(auto) measure(Stage stage, StageWork&& work) {
        const Watch watch{seconds[static_cast<std::size_t>(stage)]};
        return std::forward<StageWork>(work)();
    }

  private:
    using Clock = std::chrono::steady_clock;

    struct Watch {
        double& total;
        Clock::time_point start = Clock::now();
        ~Watch() { total += std::chrono::duration<double>(Clock::now() - start).count(); }
    };
};

/// Lines that start with a file's name.
struct Remarks {
    std::vector<std::string> warnings;  ///< what a user may not have meant
    std::vector<std::string> details;   ///< what became of things, for those who ask
    StageTimes times;
};

}  // namespace nevrel
