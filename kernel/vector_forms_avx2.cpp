// Compiled for processors with AVX2; nothing else may be.
#include "kernel/vector_forms_impl.h"

const VectorForms avx2Forms = MakeVectorForms<Avx2>();
