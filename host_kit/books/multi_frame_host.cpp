#include "host_kit/books/multi_frame_host.h"

#include <future>
#include <memory>
#include <utility>

#include "host_kit/command.h"

namespace host_kit {
namespace {

thread_local bool inMeanwhile = false;
thread_local bool keptOthersOut = false;  // the thread's current command

bool IsPromise(A_long flags2) { return (flags2 & PF_OutFlag2_SUPPORTS_THREADED_RENDERING) != 0; }

/// Whether other threads may be inside the effect with the same instance.
bool SharesTheInstance(PF_Cmd selector) {
    return selector == PF_Cmd_RENDER || selector == PF_Cmd_SMART_PRE_RENDER ||
           selector == PF_Cmd_SMART_RENDER || selector == PF_Cmd_GET_FLATTENED_SEQUENCE_DATA;
}

bool TellsOfCopies(const PF_OutData& out) {
    return (out.out_flags & PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING) == 0 ||
           (out.out_flags2 & PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA) != 0;
}

std::vector<std::byte> InstanceData(const Command& command) {
    const auto bytes = command.host.handles.bytes(command.inData.sequence_data);
    return {bytes.begin(), bytes.end()};
}

/// The rule that a command has broken; null for none.
const char* BrokenRule(const Command& command, PF_Err code, const std::vector<std::byte>& before) {
    if (keptOthersOut) return "held a lock while it called the host";
    if (!SharesTheInstance(command.selector)) return nullptr;
    if (InstanceData(command) != before) return "wrote to the data of a shared instance";
    PF_Handle handedOver = command.outData.sequence_data;
    if (command.selector != PF_Cmd_GET_FLATTENED_SEQUENCE_DATA) {
        return handedOver == command.host.blankOut.sequence_data
                   ? nullptr
                   : "replaced the data of a shared instance";
    }
    const bool copied =
        command.host.handles.owns(handedOver) && handedOver != command.inData.sequence_data;
    return code != PF_Err_NONE || copied ? nullptr : "gave no copy of the instance's data";
}

}  // namespace

MultiFrameHost::~MultiFrameHost() { joinLate(); }

CallVerdict MultiFrameHost::enter(HostCall call, A_long number, const char* name) {
    if (rules == MultiFrameRules::Enforced && IsPromise(promised_) && meanwhile && !inMeanwhile)
        goOnMeanwhile();
    return WatchedHost::enter(call, number, name);
}

void MultiFrameHost::goOnMeanwhile() {
    auto task = std::make_shared<std::packaged_task<void()>>([this] {
        inMeanwhile = true;
        meanwhile();
    });
    const std::future<void> done = task->get_future();
    std::thread other([task] { (*task)(); });
    if (done.wait_for(patience) == std::future_status::ready) {
        other.join();
        return;
    }
    keptOthersOut = true;
    const std::lock_guard lock(mutex_);
    late_.push_back(std::move(other));
}

void MultiFrameHost::joinLate() {
    std::vector<std::thread> late;
    {
        const std::lock_guard lock(mutex_);
        late.swap(late_);
    }
    for (std::thread& thread : late) thread.join();
}

PF_Err MultiFrameHost::send(const Command& command, std::span<const PF_ParamDef> passed,
                            const std::function<PF_Err()>& call) {
    const std::vector<std::byte> before = InstanceData(command);
    keptOthersOut = false;
    const PF_Err code = WatchedHost::send(command, passed, call);
    if (rules == MultiFrameRules::Unknown) return code;
    if (!inMeanwhile) joinLate();

    const char* broken = nullptr;
    if (command.selector == PF_Cmd_GLOBAL_SETUP) {
        if (code != PF_Err_NONE) return code;
        promised_ = command.outData.out_flags2;
        if (!TellsOfCopies(command.outData)) broken = "promises no flattened copies";
    } else {
        broken = BrokenRule(command, code, before);
    }
    if (broken == nullptr || !IsPromise(promised_)) return code;
    command.violation(broken);
    return rules == MultiFrameRules::Enforced ? PF_Err_INTERNAL_STRUCT_DAMAGED : code;
}

}  // namespace host_kit
