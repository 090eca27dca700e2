// A host from 2022 on, which renders several frames at once.
#pragma once

#include <chrono>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "host_kit/books/watched_host.h"

namespace host_kit {

/// What such a host does with an effect that promises at its global set-up to render several frames
/// at once, and breaks a rule that goes with it.
enum class MultiFrameRules {
    Unknown,   ///< an earlier host: there is no such promise
    Noted,     ///< it notes a violation
    Enforced,  ///< the command fails besides, and `meanwhile` puts more to the test
};

/// Checks on every command that the instance's data is written by those alone that may, that copies
/// of it are copies, and that no lock is held while the host is called.
struct MultiFrameHost : WatchedHost {
    ~MultiFrameHost() override;

    MultiFrameRules rules = MultiFrameRules::Noted;
    /// What another thread does in the middle of each call to the host: rendering a frame, say.
    std::function<void()> meanwhile;
    /// How long a call waits for that before it counts as kept out by a lock.
    std::chrono::milliseconds patience{60'000};

  protected:
    CallVerdict enter(HostCall call, A_long number, const char* name) override;
    PF_Err send(const Command& command, std::span<const PF_ParamDef> passed,
                const std::function<PF_Err()>& call) override;

  private:
    void goOnMeanwhile();
    void joinLate();

    std::atomic<A_long> promised_{0};  ///< flags of the global set-up
    std::mutex mutex_;
    std::vector<std::thread> late_;  ///< still busy with `meanwhile` when their call went on
};

}  // namespace host_kit
