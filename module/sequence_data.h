// The record that the host keeps for each applied instance, in memory and in saved projects. Each
// command returns PF_Err_NONE or the code of its failure, and throws PF_Err_BAD_CALLBACK_PARAM when
// the host lacks a suite that it needs.
#pragma once

#include "sdk/effect_api.h"

/// A mark and nothing else: the values of an instance are its parameters.
struct SequenceData {
    A_u_char valid;  ///< 1 in a record that the module wrote
    A_u_char unnamed[3];
};
static_assert(sizeof(SequenceData) == 4, "as stored in projects");

/// Makes the record of a new instance, in a new handle in `outData`. Returns PF_Err_OUT_OF_MEMORY
/// or PF_Err_INTERNAL_STRUCT_DAMAGED when the host gives no handle or cannot lock it.
[[nodiscard]] PF_Err SequenceSetup(const PF_InData* inData, PF_OutData* outData);

/// Makes a record from the stored one in `inData`, which stays the host's; a fresh one where there
/// is none or where it is not the module's. Codes as for SequenceSetup.
[[nodiscard]] PF_Err SequenceResetup(const PF_InData* inData, PF_OutData* outData);

/// Makes the record to store from the one in `inData`, which stays the host's. Codes as for
/// SequenceSetup; without a record, PF_Err_INTERNAL_STRUCT_DAMAGED.
[[nodiscard]] PF_Err SequenceFlatten(const PF_InData* inData, PF_OutData* outData);

/// The same as a copy of the instance's own record, which is not written; for hosts that render
/// several frames at once meanwhile. Codes as for SequenceFlatten.
[[nodiscard]] PF_Err GetFlattenedSequenceData(const PF_InData* inData, PF_OutData* outData);

/// Frees the record in `inData`, if there is one. Always PF_Err_NONE.
[[nodiscard]] PF_Err SequenceSetdown(const PF_InData* inData, PF_OutData* outData);
