#include "command/in_parallel.h"

#include <atomic>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace nevrel {
namespace {

class Pieces {
  public:
    Pieces(std::size_t count, const std::function<Outcome(std::size_t)>& work,
           const Complain& complain)
        : work_(work), complain_(complain), outcomes_(count) {}

    /// One thread's share.
    void workOn() {
        for (std::size_t i = next_++; i < outcomes_.size(); i = next_++) finish(i, work_(i));
    }

    [[nodiscard]] bool allSucceeded() const { return succeeded_; }

  private:
    void finish(std::size_t piece, Outcome outcome) {
        const std::lock_guard lock(mutex_);
        succeeded_ = succeeded_ && outcome.succeeded;
        outcomes_[piece] = std::move(outcome);
        for (; told_ < outcomes_.size() && outcomes_[told_]; ++told_) {
            for (const std::string& line : outcomes_[told_]->lines) complain_(line);
        }
    }

    const std::function<Outcome(std::size_t)>& work_;
    const Complain& complain_;
    std::atomic<std::size_t> next_{0};
    std::mutex mutex_;
    std::vector<std::optional<Outcome>> outcomes_;  ///< of each piece that is done
    std::size_t told_ = 0;                          ///< pieces whose outcome has been told
    bool succeeded_ = true;
};

}  // namespace

bool DoInParallel(std::size_t count, unsigned threads,
                  const std::function<Outcome(std::size_t)>& work, const Complain& complain) {
    Pieces pieces(count, work, complain);
    std::vector<std::jthread> helpers;
    try {
        while (helpers.size() + 1 < threads && helpers.size() + 1 < count)
            helpers.emplace_back([&pieces] { pieces.workOn(); });
    } catch (const std::system_error&) {  // the system gives no more threads; fewer will do
    }
    pieces.workOn();
    helpers.clear();  // waits for them
    return pieces.allSucceeded();
}

}  // namespace nevrel
