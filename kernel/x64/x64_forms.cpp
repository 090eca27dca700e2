#include "kernel/x64/x64_forms.h"

#ifdef _MSC_VER
#include <immintrin.h>
#include <intrin.h>
#endif

namespace {

#ifdef _MSC_VER

/// Whether the system saves all of these register states (the bits of XCR0).
bool SystemSaves(unsigned states) {
    int registers[4];
    __cpuid(registers, 1);
    constexpr int osSavesState = 1 << 27;
    return (registers[2] & osSavesState) != 0 && (_xgetbv(0) & states) == states;
}

/// Whether the processor has all of these features (EBX of leaf 7).
bool HasFeatures(unsigned features) {
    int registers[4];
    __cpuid(registers, 0);
    if (registers[0] < 7) return false;
    __cpuidex(registers, 7, 0);
    return (static_cast<unsigned>(registers[1]) & features) == features;
}

constexpr unsigned vectors256 = 0x06;  // the halves of the 32-byte registers
constexpr unsigned vectors512 = 0xE6;  // and the masks and the rest of the 64-byte ones
constexpr unsigned avx2 = 1U << 5;
constexpr unsigned avx512 = 1U << 16 | 1U << 17 | 1U << 30 | 1U << 31;  // F, DQ, BW, VL

bool HasAvx2() noexcept { return SystemSaves(vectors256) && HasFeatures(avx2); }
bool HasAvx512() noexcept { return SystemSaves(vectors512) && HasFeatures(avx512); }

#else

bool HasAvx2() noexcept {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") != 0;
}
bool HasAvx512() noexcept {
    return __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512bw") != 0 &&
           __builtin_cpu_supports("avx512dq") != 0 && __builtin_cpu_supports("avx512vl") != 0;
}

#endif

}  // namespace

std::size_t UsableX64Sets() noexcept {
    if (!HasAvx2()) return 1;
    return HasAvx512() ? 3 : 2;
}
