#include "kernel/vector_forms.h"

#include <cassert>

#include "kernel/processor.h"

#ifdef NEVREL_X64

#ifdef _MSC_VER
#include <immintrin.h>
#include <intrin.h>
#endif

namespace {

bool HasAvx2() noexcept {
#ifdef _MSC_VER
    int registers[4];
    __cpuid(registers, 0);
    if (registers[0] < 7) return false;
    __cpuid(registers, 1);
    constexpr int osSavesState = 1 << 27;
    constexpr int avx = 1 << 28;
    if ((registers[2] & osSavesState) == 0 || (registers[2] & avx) == 0 || (_xgetbv(0) & 6) != 6)
        return false;
    __cpuidex(registers, 7, 0);
    constexpr int avx2 = 1 << 5;
    return (registers[1] & avx2) != 0;
#else
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") != 0;
#endif
}

}  // namespace

InstructionSet BestInstructionSet() noexcept {
    return HasAvx2() ? InstructionSet::avx2 : InstructionSet::sse2;
}

const VectorForms* FormsFor(InstructionSet set) noexcept {
    assert(set <= BestInstructionSet());
    switch (set) {
        case InstructionSet::avx2:
            return &avx2Forms;
        case InstructionSet::sse2:
            return &sse2Forms;
        default:
            return nullptr;
    }
}

#else

InstructionSet BestInstructionSet() noexcept { return InstructionSet::plain; }

const VectorForms* FormsFor(InstructionSet) noexcept { return nullptr; }

#endif
