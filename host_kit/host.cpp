#include "host_kit/host.h"

namespace host_kit {

PF_Handle Host::makeHandle(std::size_t size) {
    PF_Handle handle = handles.make(size);
    if (handle != nullptr)
        accounts.lend({LoanKind::Handle, handle, std::to_string(size) + " bytes", 0, -1, true});
    return handle;
}

void Host::disposeHandle(PF_Handle handle) {
    if (handles.dispose(handle) && !accounts.giveBack(LoanKind::Handle, handle, 0)) {
        accounts.addViolation("a handle without a row in the accounts");
    }
}

}  // namespace host_kit
