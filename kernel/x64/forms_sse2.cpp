// Compiled for every x64 processor.
#include "kernel/x64/vector_stages.h"

constinit const Forms sse2Forms = MakeForms<Sse2>("sse2");
