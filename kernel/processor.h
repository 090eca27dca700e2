// Which processor this is compiled for. Elsewhere than on x64 the plain forms do all the work.
#pragma once

#if (defined(__x86_64__) || defined(_M_X64)) && !defined(NEVREL_PLAIN_FORMS_ONLY)
#define NEVREL_X64
#include <emmintrin.h>  // SSE2, which every x64 processor has
#endif

// For the few functions that must not become calls.
#ifdef _MSC_VER
#define NEVREL_INLINE __forceinline
#else
#define NEVREL_INLINE inline __attribute__((always_inline))
#endif
