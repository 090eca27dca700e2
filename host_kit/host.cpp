#include "host_kit/host.h"

namespace host_kit {

PF_Handle Host::makeHandle(std::size_t size) {
    PF_Handle handle = handles.make(size);
    if (handle != nullptr) {
        observer->lend({LoanKind::Handle, handle, static_cast<A_long>(size)});
        adopt(handle);
    }
    return handle;
}

void Host::disposeHandle(PF_Handle handle) {
    if (handles.dispose(handle)) observer->giveBack(LoanKind::Handle, handle, {});
}

}  // namespace host_kit
