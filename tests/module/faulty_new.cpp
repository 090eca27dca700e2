// An operator new for a module whose memory runs out on request.
#include <cstdlib>
#include <new>

#include "module/entry_point.h"
#include "tests/module/allocation_faults.h"

extern "C" NEVREL_EXPORT AllocationFaults allocationFaults;
AllocationFaults allocationFaults;

void* operator new(std::size_t size) {
    const int number = ++allocationFaults.count;
    const int nth = allocationFaults.nth;
    const bool fails = nth > 0 && (allocationFaults.fromThereOn ? number >= nth : number == nth);
    void* memory = fails ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
