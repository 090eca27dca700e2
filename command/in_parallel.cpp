#include "command/in_parallel.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "command/errors.h"

namespace nevrel {
namespace {

class Pieces {
  public:
    Pieces(std::size_t count, const Work& work, const Tell& tell)
        : count_(count), work_(work), tell_(tell) {}

    /// One thread's share.
    void workOn() {
        while (const auto piece = take()) finish(*piece, work_(*piece));
    }

  private:
    std::optional<std::size_t> take() {
        const std::lock_guard lock(mutex_);
        if (stopped_ || next_ == count_) return std::nullopt;
        return next_++;
    }

    void finish(std::size_t piece, Outcome outcome) {
        const std::lock_guard lock(mutex_);
        untold_.emplace(piece, std::move(outcome));
        while (!untold_.empty() && untold_.begin()->first == told_) {
            if (!tell_(told_, untold_.begin()->second)) stopped_ = true;
            untold_.erase(untold_.begin());
            ++told_;
        }
    }

    const std::size_t count_;
    const Work& work_;
    const Tell& tell_;
    std::mutex mutex_;
    std::size_t next_ = 0;
    std::size_t told_ = 0;
    std::map<std::size_t, Outcome> untold_;  ///< done before their turn
    bool stopped_ = false;
};

/// Up to `count` threads that work on the pieces; fewer where the system gives no more.
std::vector<std::jthread> StartHelpers(Pieces& pieces, std::size_t count) {
    std::vector<std::jthread> helpers;
    try {
        while (helpers.size() < count) helpers.emplace_back([&pieces] { pieces.workOn(); });
    } catch (const std::system_error&) {  // fewer will do
    }
    return helpers;
}

}  // namespace

Outcome Attempt(const std::filesystem::path& picture, const std::function<void()>& work) {
    using Verdict = Outcome::Verdict;
    try {
        work();
        return {};
    } catch (const PassingError& error) {
        return {.verdict = Verdict::FailedForAWhile, .lines = {error.what()}};
    } catch (const PictureError& error) {
        return {.verdict = Verdict::Failed, .lines = {error.what()}};
    } catch (const std::exception& error) {
        return {.verdict = Verdict::Failed, .lines = {PictureError(picture, error.what()).what()}};
    }
}

void DoInParallel(std::size_t count, unsigned threads, const Work& work, const Tell& tell) {
    Pieces pieces(count, work, tell);
    const std::size_t useful = std::min<std::size_t>(threads, count);
    auto helpers = StartHelpers(pieces, useful == 0 ? 0 : useful - 1);
    pieces.workOn();
    helpers.clear();  // waits for them
}

}  // namespace nevrel
