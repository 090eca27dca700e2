// Runs the kernels on the host's images.
#pragma once

#include "kernel/forms.h"
#include "render/render_job.h"

/// Renders the job's input into its output with the kernel for its pixel format and colour-key
/// mode. The forms change nothing but the time it takes.
///
/// Returns PF_Err_NONE; PF_Err_UNRECOGNIZED_PARAM_TYPE for a pixel format that is none of ARGB32,
/// ARGB64 and ARGB128; PF_Err_BAD_CALLBACK_PARAM when the two images differ in size; or the code of
/// a host call that failed. Throws PF_Err_BAD_CALLBACK_PARAM when the host lacks a suite.
[[nodiscard]] PF_Err DispatchKernel(const RenderJob& job, const Forms& forms = FastestForms());
