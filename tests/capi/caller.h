// A caller of the C interface that counts what it is asked for.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <vector>

#include "nevrel.h"

struct Caller {
    bool givesMemory = true;
    std::size_t cancelAt = SIZE_MAX;  ///< the call that says so, of those that tell the progress
    int allocations = 0, held = 0;
    std::vector<int32_t> rowsDone{}, rowsInAll{};

    nevrel_callbacks callbacks() {
        return {this,
                [](void* self, size_t bytes) -> void* {
                    auto& caller = *static_cast<Caller*>(self);
                    if (!caller.givesMemory) return nullptr;
                    ++caller.allocations;
                    ++caller.held;
                    return std::malloc(bytes);
                },
                [](void* self, void* memory) {
                    --static_cast<Caller*>(self)->held;
                    std::free(memory);
                },
                [](void* self, int32_t done, int32_t all) {
                    auto& caller = *static_cast<Caller*>(self);
                    caller.rowsDone.push_back(done);
                    caller.rowsInAll.push_back(all);
                    return caller.rowsDone.size() > caller.cancelAt ? 1 : 0;
                }};
    }
};
