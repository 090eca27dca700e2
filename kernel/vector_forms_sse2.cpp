#include "kernel/vector_forms_impl.h"

const VectorForms sse2Forms = MakeVectorForms<Sse2>();
