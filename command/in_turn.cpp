#include "command/in_turn.h"

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
    Pieces(std::size_t count, const std::function<std::string(std::size_t)>& work,
           const Complain& complain)
        : work_(work), complain_(complain), complaints_(count) {}

    /// One thread's share.
    void workOn() {
        for (std::size_t i = next_++; i < complaints_.size(); i = next_++) finish(i, work_(i));
    }

    [[nodiscard]] bool allSucceeded() const { return succeeded_; }

  private:
    void finish(std::size_t piece, std::string complaint) {
        const std::lock_guard lock(mutex_);
        complaints_[piece] = std::move(complaint);
        for (; told_ < complaints_.size() && complaints_[told_]; ++told_) {
            if (complaints_[told_]->empty()) continue;
            succeeded_ = false;
            complain_(*complaints_[told_]);
        }
    }

    const std::function<std::string(std::size_t)>& work_;
    const Complain& complain_;
    std::atomic<std::size_t> next_{0};
    std::mutex mutex_;
    std::vector<std::optional<std::string>> complaints_;  ///< of each piece that is done
    std::size_t told_ = 0;                                ///< pieces whose outcome has been told
    bool succeeded_ = true;
};

}  // namespace

bool DoInTurn(std::size_t count, unsigned threads,
              const std::function<std::string(std::size_t)>& work, const Complain& complain) {
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
