// Counts an effect's calls to its host and makes chosen ones fail.
#pragma once

#include <array>
#include <cstddef>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "sdk/effect_api.h"

namespace host_kit {

/// Every function that the host offers.
enum class HostCall {
    AcquireSuite,
    ReleaseSuite,
    NewHandle,
    LockHandle,
    UnlockHandle,
    DisposeHandle,
    GetHandleSize,
    NewWorld,
    DisposeWorld,
    GetPixelFormat,
    CopyWorld,
    UpdateParamUi,
    IsRenderEngine,
    CheckoutParam,
    CheckinParam,
    AddParam,
    GetPlatformData,
    GetPixelData8,
    GetPixelData16,
    Sprintf,
    Strcpy,
    CheckoutLayer,
    CheckoutLayerPixels,
    CheckinLayerPixels,
    CheckoutOutput,
};
inline constexpr std::size_t hostCallCount = static_cast<std::size_t>(HostCall::CheckoutOutput) + 1;

/// How a call fails. A call that gives something back still takes it back when it reports an error.
enum class FaultShape {
    Error,  ///< it returns the fault's code
    Null,   ///< the pointer that it returns or stores is null, and it reports success
};

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

/// What a call has to do.
struct CallVerdict {
    std::optional<FaultShape> fault;
    PF_Err code = PF_Err_NONE;

    /// What the call returns: the fault's code when it has to report an error.
    [[nodiscard]] PF_Err result() const { return fault == FaultShape::Error ? code : PF_Err_NONE; }
};

/// Safe to use from several threads.
class CallMonitor {
  public:
    /// Every host function calls this first and does as the verdict says.
    CallVerdict enter(HostCall call, A_long number = 0, const char* name = nullptr);

    /// Replaces the fault set before and counts anew for it.
    void inject(const Fault& fault);
    void clearFault();
    /// How many calls the present fault has made fail.
    [[nodiscard]] int faultsFired() const;

    /// Calls since the start or the last `resetCounts`.
    [[nodiscard]] int count() const;
    [[nodiscard]] int count(HostCall call) const;
    void resetCounts();

    /// Switches the recording of calls on or off; switching on starts a new record.
    void record(bool on);
    [[nodiscard]] std::vector<HostCallRecord> recorded() const;

  private:
    [[nodiscard]] CallVerdict judge(HostCall call);

    mutable std::mutex mutex_;
    std::array<int, hostCallCount> counts_{};
    std::optional<Fault> fault_;
    int matched_ = 0;
    int fired_ = 0;
    bool recording_ = false;
    std::vector<HostCallRecord> records_;
};

}  // namespace host_kit
