// What a user or a program learns while pictures are smoothed.
#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>
#include <optional>
#include <string>

#include "command/in_parallel.h"
#include "command/sequences/picture_list.h"

namespace nevrel {

/// Exit status of what may go better later: EX_TEMPFAIL of sysexits.h.
inline constexpr int tryAgainStatus = 75;

enum class ProgressStyle {
    Line,   ///< one line on the terminal, written anew in its place
    Plain,  ///< a line on the error output every few seconds
    Json,   ///< an object a line on the standard output, for each picture and the end
    OpenJd  ///< `openjd_progress` and `openjd_status` lines on the standard output
};

/// The style of that name; of "auto" or none, what suits the error output. Throws UsageError.
[[nodiscard]] ProgressStyle ParseProgressStyle(const std::string& name);

struct ProgressSettings {
    ProgressStyle style = ProgressStyle::Plain;
    bool quiet = false;    ///< failures only
    bool verbose = false;  ///< a line for each picture
    bool timings = false;  ///< and what it spent its time on
};

/// Counts pictures and tells of them. Its functions may be called from several threads.
class Progress {
  public:
    Progress(const ProgressSettings& settings, std::size_t total, const Complain& complain);

    /// A picture is done, or has failed.
    void add(const PicturePaths& paths, const Outcome& outcome);
    /// Nothing more will come.
    void finish();
    /// The program is being ended from outside; `advice` says how to go on.
    void interrupt(const std::string& advice);

    /// 0 when no picture failed, 75 when some did that may go better later, else 1.
    [[nodiscard]] int status() const;

  private:
    using Clock = std::chrono::steady_clock;

    void showLine(const std::string& text);
    void clearLine();
    void tellPlain();
    void tellJson(const PicturePaths& paths, const Outcome& outcome) const;
    void tellOpenJd(const PicturePaths& paths, const Outcome& outcome) const;
    [[nodiscard]] double seconds() const;
    [[nodiscard]] std::size_t finished() const { return done_ + skipped_ + failed_; }
    /// "12 of 100 done, 3 there already, 1 failed"
    [[nodiscard]] std::string counts() const;
    /// ", 8.3 a second, 0:12 left"
    [[nodiscard]] std::string pace() const;

    const ProgressSettings settings_;
    const std::size_t total_;
    const Complain& complain_;
    const Clock::time_point start_ = Clock::now();
    std::mutex mutex_;
    std::size_t done_ = 0, skipped_ = 0, failed_ = 0;
    bool mayPass_ = false;  ///< a failure is of the kind that may go better later
    StageTimes times_;
    std::optional<Clock::time_point> lastTold_;
    bool lineShown_ = false;
};

}  // namespace nevrel
