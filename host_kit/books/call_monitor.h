// Counts an effect's calls to its host and makes chosen ones fail.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "host_kit/observer.h"

namespace host_kit {

/// Whether the host's interface lets a call fail in that way.
[[nodiscard]] bool CanFail(HostCall call, FaultShape shape);

/// A failure to come. A call that cannot fail in the wanted shape goes through as ever.
struct Fault {
    std::optional<HostCall> call;  ///< only calls of this kind count; any kind when empty
    int nth = 1;                   ///< the first such call after `inject` is 1
    FaultShape shape = FaultShape::Error;
    PF_Err code = PF_Err_OUT_OF_MEMORY;
    bool fromThereOn = false;  ///< the later ones fail too
};

/// A call as it happened: its kind, its main number (index, id, size, version) and its name if it
/// has one.
struct HostCallRecord {
    HostCall call;
    A_long number;
    std::string name;
};

/// Safe to use from several threads.
class CallMonitor {
  public:
    /// Counts a call and judges it.
    CallVerdict enter(HostCall call, A_long number, const char* name);

    /// Replaces the fault set before and counts anew for it.
    void inject(const Fault& fault);
    void clearFault();
    /// How many calls the present fault has made fail.
    [[nodiscard]] int faultsFired() const;

    /// Calls since the start or the last `resetCount`.
    [[nodiscard]] int count() const;
    void resetCount();

    /// Switches the recording of calls on or off; switching on starts a new record.
    void record(bool on);
    [[nodiscard]] std::vector<HostCallRecord> recorded() const;

  private:
    [[nodiscard]] CallVerdict judge(HostCall call);

    mutable std::mutex mutex_;
    int count_ = 0;
    std::optional<Fault> fault_;
    int matched_ = 0;
    int fired_ = 0;
    bool recording_ = false;
    std::vector<HostCallRecord> records_;
};

}  // namespace host_kit
