// Host memory handles held for part of a command.
#pragma once

#include "host/suite_handler.h"

/// A lock on a host handle, given back when it goes.
class HandleLock {
  public:
    /// Locks the handle; a null handle counts as one that cannot be locked.
    HandleLock(const PF_HandleSuite1& suite, PF_Handle handle);
    ~HandleLock();
    HandleLock(const HandleLock&) = delete;
    HandleLock& operator=(const HandleLock&) = delete;

    /// The handle's bytes, aligned to nothing in particular; null when it could not be locked.
    [[nodiscard]] void* data() const { return data_; }

  private:
    const PF_HandleSuite1& suite_;
    PF_Handle handle_;
    void* data_;
};

/// A new host handle, disposed of when it goes unless it was handed on.
class NewHandle {
  public:
    /// Asks the host for a handle of `size` bytes.
    NewHandle(const PF_HandleSuite1& suite, A_HandleSize size);
    ~NewHandle();
    NewHandle(const NewHandle&) = delete;
    NewHandle& operator=(const NewHandle&) = delete;

    /// The handle; null when the host gave none or when it was handed on.
    [[nodiscard]] PF_Handle get() const { return handle_; }

    /// Hands the handle on: whoever takes the result disposes of it.
    [[nodiscard]] PF_Handle release();

  private:
    const PF_HandleSuite1& suite_;
    PF_Handle handle_;
};
