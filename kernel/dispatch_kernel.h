// The way into the kernels.
#pragma once

#include "kernel/render_job.h"
#include "kernel/vector_forms.h"

/// Renders the job's input into its output with the kernel for its pixel format and colour-key
/// mode.
///
/// Returns PF_Err_NONE; PF_Err_UNRECOGNIZED_PARAM_TYPE for a pixel format that is none of ARGB32,
/// ARGB64 and ARGB128; PF_Err_BAD_CALLBACK_PARAM when the two images differ in size; or the code of
/// a host call that failed. Throws a PF_Err when the host lacks a suite.
[[nodiscard]] PF_Err DispatchKernel(const RenderJob& job);

/// The same with the vector forms of one instruction set, which the processor must have.
[[nodiscard]] PF_Err DispatchKernel(const RenderJob& job, InstructionSet instructionSet);
