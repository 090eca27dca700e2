#include "host_kit/handle_heap.h"

#include <algorithm>
#include <limits>
#include <new>

namespace host_kit {

PF_Handle HandleHeap::make(A_HandleSize size) try {
    if (size > static_cast<A_HandleSize>(std::numeric_limits<std::ptrdiff_t>::max()))
        return nullptr;
    auto block = std::make_unique<Block>();
    block->size = static_cast<std::size_t>(size);
    block->memory.reset(new std::byte[block->size]);
    std::fill_n(block->memory.get(), block->size, std::byte{0xA5});
    const std::lock_guard lock(mutex_);
    PF_Handle handle = &masters_.emplace_back(block->memory.get());
    blocks_.emplace(handle, std::move(block));
    return handle;
} catch (const std::bad_alloc&) {
    return nullptr;
}

HandleHeap::Block* HandleHeap::find(PF_Handle handle) const {
    const auto found = blocks_.find(handle);
    return found == blocks_.end() ? nullptr : found->second.get();
}

void* HandleHeap::lock(PF_Handle handle) {
    const std::lock_guard lock(mutex_);
    Block* block = find(handle);
    if (block == nullptr) return nullptr;
    ++block->locks;
    return block->memory.get();
}

bool HandleHeap::unlock(PF_Handle handle) {
    const std::lock_guard lock(mutex_);
    Block* block = find(handle);
    if (block == nullptr || block->locks == 0) return false;
    --block->locks;
    return true;
}

bool HandleHeap::dispose(PF_Handle handle) {
    const std::lock_guard lock(mutex_);
    const Block* block = find(handle);
    if (block == nullptr || block->locks > 0) return false;
    blocks_.erase(handle);
    *handle = nullptr;
    return true;
}

bool HandleHeap::owns(PF_Handle handle) const {
    const std::lock_guard lock(mutex_);
    return find(handle) != nullptr;
}

std::span<std::byte> HandleHeap::bytes(PF_Handle handle) const {
    const std::lock_guard lock(mutex_);
    const Block* block = find(handle);
    if (block == nullptr) return {};
    return {block->memory.get(), block->size};
}

}  // namespace host_kit
