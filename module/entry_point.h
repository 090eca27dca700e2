// The module's one export.
#pragma once

#include "sdk/effect_api.h"

#if defined(_WIN32)
#define NEVREL_EXPORT __declspec(dllexport)
#elif defined(__GNUC__)
#define NEVREL_EXPORT __attribute__((visibility("default")))
#else
#define NEVREL_EXPORT
#endif

/// Carries out one host command and returns its code; a command that the effect does not know is
/// answered with PF_Err_NONE. Throws nothing. `extra` is the record that comes with the
/// smart-render commands.
extern "C" NEVREL_EXPORT PF_Err EntryPointFunc(PF_Cmd cmd, PF_InData* inData, PF_OutData* outData,
                                               PF_ParamDef* params[], PF_LayerDef* output,
                                               void* extra) noexcept;
