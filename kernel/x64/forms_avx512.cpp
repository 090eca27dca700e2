// Compiled for processors with AVX-512 (F, BW, DQ and VL); nothing else may be.
#include "kernel/x64/vector_stages.h"

constinit const Forms avx512Forms = MakeForms<Avx512>("avx512");
