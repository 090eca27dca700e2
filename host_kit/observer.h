// What a host tells of an effect's dealings with it, and who hears of them.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>

#include "sdk/effect_api.h"

namespace host_kit {

class Command;

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

/// How a call fails. A call that gives something back still takes it back when it reports an error.
enum class FaultShape {
    Error,  ///< it returns the fault's code
    Null,   ///< the pointer that it returns or stores is null, and it reports success
};

/// What a call has to do.
struct CallVerdict {
    std::optional<FaultShape> fault;
    PF_Err code = PF_Err_NONE;

    /// What the call returns: the fault's code when it has to report an error.
    [[nodiscard]] PF_Err result() const { return fault == FaultShape::Error ? code : PF_Err_NONE; }
};

/// Tells the commands of a host apart; the default is for what the host does outside any.
struct CommandTag {
    std::uint64_t number = 0;  ///< serial
    PF_Cmd selector = -1;
};

enum class LoanKind { Suite, Handle, Lock, World, Parameter, Layer };

/// One thing lent.
struct Loan {
    LoanKind kind;
    const void* key;  ///< tells it apart from others of its kind
    A_long number;    ///< its main number: index, id, size, version
    const char* name = "";
    CommandTag borrower{};
};

/// Hears of everything that happens at a host, from several threads at once. This one does nothing;
/// one that keeps books and lets calls fail is in books/. But for such failures a host behaves the
/// same whoever observes it.
class Observer {
  public:
    Observer() = default;
    virtual ~Observer() = default;
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;

    /// A call begins, with its main number and its name if it has one.
    virtual CallVerdict enter(HostCall /*call*/, A_long /*number*/, const char* /*name*/) {
        return {};
    }
    virtual void lend(const Loan& /*loan*/) {}
    /// `by` gives back what anyone borrowed.
    virtual void giveBack(LoanKind /*kind*/, const void* /*key*/, const CommandTag& /*by*/) {}
    /// A handle has been handed to the host as a result, so it may outlive its command.
    virtual void keep(PF_Handle /*handle*/) {}
    /// The effect did what a host refuses.
    virtual void violation(const char* /*what*/, const CommandTag& /*command*/) {}
    /// Makes the call into the effect, which is passed these parameters.
    virtual PF_Err send(const Command& /*command*/, std::span<const PF_ParamDef> /*passed*/,
                        const std::function<PF_Err()>& call) {
        return call();
    }
    /// A command ends.
    virtual void settle(const CommandTag& /*command*/, bool /*failed*/) {}
};

}  // namespace host_kit
