// Compiled for processors with AVX-512 (F, BW, DQ and VL); nothing else may be.
#include "kernel/x64/vector_stages.h"

// The processor waits long for 64 bytes that have just been written as eight words.
constinit const Forms avx512Forms = MakeForms<Avx512, Avx2>("avx512");
