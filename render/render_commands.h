// The host's render commands. Each returns PF_Err_NONE or the code of its failure, as a rule that
// of a host call, and throws PF_Err_BAD_CALLBACK_PARAM when the host lacks a suite that it needs.
#pragma once

#include "sdk/effect_api.h"

/// Renders 8-bit and 16-bit images with the values of `params`; under Premiere Pro copies the input
/// instead. Returns PF_Err_UNRECOGNIZED_PARAM_TYPE for images of other or of different depths.
[[nodiscard]] PF_Err Render(PF_InData* inData, PF_OutData* outData, PF_ParamDef* params[],
                            PF_LayerDef* output);

/// Reads the values for a frame into a host handle for SmartRender, and asks for the input layer
/// over exactly the area that the host asks for. The host disposes of the handle through the delete
/// function that comes with it. Returns the host's code when it gives a parameter or the layer not.
[[nodiscard]] PF_Err SmartPreRender(PF_InData* inData, PF_OutData* outData,
                                    PF_PreRenderExtra* extra);

/// Renders images of every depth with the values that SmartPreRender read. After a failure the
/// input stays checked out: the host takes it back at the end of the command.
[[nodiscard]] PF_Err SmartRender(PF_InData* inData, PF_OutData* outData,
                                 PF_SmartRenderExtra* extra);
