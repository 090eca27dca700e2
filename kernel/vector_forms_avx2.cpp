// Compiled for processors with AVX2; nothing else may be.
#include "kernel/processor.h"

#ifdef NEVREL_X64
#include "kernel/vector_forms_impl.h"

const VectorForms avx2Forms = MakeVectorForms<Avx2>();
#endif
