// The nine kernels: one algorithm at three depths, each without key, with key and with inverted
// key.
#pragma once

#include "kernel/render_job.h"
#include "kernel/vector_forms.h"

// Every kernel makes the output a copy of the input (one that marks the keyed-out pixels when there
// is a key), finds the edges of that copy and blends the input into the output along them.
//
// The vector forms change nothing but the time it takes; null uses the plain forms.
//
// Each returns PF_Err_BAD_CALLBACK_PARAM when the images differ in size, the code of a host call
// that failed, or PF_Err_NONE; it throws a PF_Err when the host lacks a suite. Nothing borrowed
// outlives the call.
[[nodiscard]] PF_Err Kernel8(const RenderJob& job, const VectorForms* forms);
[[nodiscard]] PF_Err Kernel8Key(const RenderJob& job, const VectorForms* forms);
[[nodiscard]] PF_Err Kernel8KeyInvert(const RenderJob& job, const VectorForms* forms);
[[nodiscard]] PF_Err Kernel16(const RenderJob& job, const VectorForms* forms);
[[nodiscard]] PF_Err Kernel16Key(const RenderJob& job, const VectorForms* forms);
[[nodiscard]] PF_Err Kernel16KeyInvert(const RenderJob& job, const VectorForms* forms);
[[nodiscard]] PF_Err KernelFloat(const RenderJob& job, const VectorForms* forms);
[[nodiscard]] PF_Err KernelFloatKey(const RenderJob& job, const VectorForms* forms);
[[nodiscard]] PF_Err KernelFloatKeyInvert(const RenderJob& job, const VectorForms* forms);
