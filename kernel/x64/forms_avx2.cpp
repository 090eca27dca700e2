// Compiled for processors with AVX2; nothing else may be.
#include "kernel/x64/vector_stages.h"

constinit const Forms avx2Forms = MakeForms<Avx2>("avx2");
