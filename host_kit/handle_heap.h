// The host's movable memory blocks.
#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <span>

#include "sdk/effect_api.h"

namespace host_kit {

/// Owns every handle of one host; a handle not from here is refused. Safe to use from several
/// threads.
class HandleHeap {
  public:
    /// A block of `size` bytes that hold no zeros to rely on. Null when there is no memory.
    [[nodiscard]] PF_Handle make(A_HandleSize size);
    /// The block's address, null for a stranger. Locks are counted.
    [[nodiscard]] void* lock(PF_Handle handle);
    /// False for a stranger or a block that is not locked.
    [[nodiscard]] bool unlock(PF_Handle handle);
    /// Frees the block. False for a stranger or a block that is locked.
    [[nodiscard]] bool dispose(PF_Handle handle);
    [[nodiscard]] bool owns(PF_Handle handle) const;
    /// The host's own view of a block, empty for a stranger.
    [[nodiscard]] std::span<std::byte> bytes(PF_Handle handle) const;

  private:
    struct Block {
        std::unique_ptr<std::byte[]> memory;
        std::size_t size = 0;
        int locks = 0;
    };

    [[nodiscard]] Block* find(PF_Handle handle) const;

    mutable std::mutex mutex_;
    std::deque<void*>
        masters_;  // what handles point to; none serves twice, so a stale handle stays one
    std::map<PF_Handle, std::unique_ptr<Block>> blocks_;
};

}  // namespace host_kit
