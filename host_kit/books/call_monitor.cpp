#include "host_kit/books/call_monitor.h"

namespace host_kit {

bool CanFail(HostCall call, FaultShape shape) {
    const bool wantsNull = shape == FaultShape::Null;
    switch (call) {
        case HostCall::NewHandle:
        case HostCall::LockHandle:
            return wantsNull;
        case HostCall::AcquireSuite:
        case HostCall::NewWorld:
        case HostCall::GetPixelData8:
        case HostCall::GetPixelData16:
        case HostCall::CheckoutLayerPixels:
        case HostCall::CheckoutOutput:
        case HostCall::GetPlatformData:
            return true;
        case HostCall::UnlockHandle:
        case HostCall::DisposeHandle:
        case HostCall::GetHandleSize:
        case HostCall::Sprintf:
        case HostCall::Strcpy:
            return false;
        default:
            return !wantsNull;
    }
}

CallVerdict CallMonitor::enter(HostCall call, A_long number, const char* name) {
    const std::lock_guard lock(mutex_);
    ++count_;
    if (recording_) records_.push_back({call, number, name == nullptr ? "" : name});
    return judge(call);
}

CallVerdict CallMonitor::judge(HostCall call) {
    if (!fault_ || (fault_->call && *fault_->call != call)) return {};
    ++matched_;
    const bool due = fault_->fromThereOn ? matched_ >= fault_->nth : matched_ == fault_->nth;
    if (!due || !CanFail(call, fault_->shape)) return {};
    ++fired_;
    return {fault_->shape, fault_->code};
}

void CallMonitor::inject(const Fault& fault) {
    const std::lock_guard lock(mutex_);
    fault_ = fault;
    matched_ = 0;
    fired_ = 0;
}

void CallMonitor::clearFault() {
    const std::lock_guard lock(mutex_);
    fault_.reset();
}

int CallMonitor::faultsFired() const {
    const std::lock_guard lock(mutex_);
    return fired_;
}

int CallMonitor::count() const {
    const std::lock_guard lock(mutex_);
    return count_;
}

void CallMonitor::resetCount() {
    const std::lock_guard lock(mutex_);
    count_ = 0;
}

void CallMonitor::record(bool on) {
    const std::lock_guard lock(mutex_);
    if (on) records_.clear();
    recording_ = on;
}

std::vector<HostCallRecord> CallMonitor::recorded() const {
    const std::lock_guard lock(mutex_);
    return records_;
}

}  // namespace host_kit
