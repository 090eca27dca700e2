#include "host/host_handle.h"

#include <utility>

HandleLock::HandleLock(const PF_HandleSuite1& suite, PF_Handle handle)
    : suite_(suite),
      handle_(handle),
      data_(handle == nullptr ? nullptr : suite.host_lock_handle(handle)) {}

HandleLock::~HandleLock() {
    if (data_ != nullptr) suite_.host_unlock_handle(handle_);
}

NewHandle::NewHandle(const PF_HandleSuite1& suite, A_HandleSize size)
    : suite_(suite), handle_(suite.host_new_handle(size)) {}

NewHandle::~NewHandle() {
    if (handle_ != nullptr) suite_.host_dispose_handle(handle_);
}

PF_Handle NewHandle::release() { return std::exchange(handle_, nullptr); }
