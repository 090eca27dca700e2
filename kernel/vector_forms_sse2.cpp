#include "kernel/processor.h"

#ifdef NEVREL_X64
#include "kernel/vector_forms_impl.h"

const VectorForms sse2Forms = MakeVectorForms<Sse2>();
#endif
