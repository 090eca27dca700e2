// Compiled for processors with AVX-512 (F, BW, DQ and VL); nothing else may be.
#include "kernel/processor.h"

#ifdef NEVREL_X64
#include "kernel/vector_forms_impl.h"

const VectorForms avx512Forms = MakeVectorForms<Avx512>();
#endif
