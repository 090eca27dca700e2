#include "module/sequence_data.h"

#include <cassert>
#include <cstring>

#include "host/host_handle.h"
#include "host/render_engine.h"
#include "host/suite_handler.h"

namespace {

constexpr SequenceData freshRecord{1, {0, 0, 0}};

/// Puts a record of its own, with the contents given, into `outData`.
PF_Err StoreRecord(const PF_HandleSuite1& suite, const void* contents, PF_OutData* outData) {
    NewHandle handle(suite, sizeof(SequenceData));
    if (handle.get() == nullptr) return PF_Err_OUT_OF_MEMORY;
    const HandleLock lock(suite, handle.get());
    if (lock.data() == nullptr) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    std::memcpy(lock.data(), contents, sizeof(SequenceData));
    outData->sequence_data = handle.release();
    return PF_Err_NONE;
}

/// Whether the bytes of a stored handle are a record of the module's: a damaged project may hold
/// fewer.
bool IsOwnRecord(const PF_HandleSuite1& suite, PF_Handle handle, const void* bytes) {
    SequenceData record;
    if (suite.host_get_handle_size(handle) < sizeof record) return false;
    std::memcpy(&record, bytes, sizeof record);
    return record.valid == freshRecord.valid;
}

enum class Live { Rewritten, Untouched };

/// Puts a flat copy of the instance's record into `outData`. A render engine gets it as it is, any
/// other host a fresh one, which the instance's own record becomes too if it may be written.
PF_Err StoreFlatCopy(const PF_InData* inData, PF_OutData* outData, Live mode) {
    assert(inData != nullptr && outData != nullptr);
    SuiteHandler suites(inData->pica_basicP);
    if (inData->sequence_data == nullptr) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    const auto& suite = suites.get<PF_HandleSuite1>();
    const HandleLock live(suite, inData->sequence_data);
    if (live.data() == nullptr) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    const bool fresh = !IsRenderEngine(inData);
    if (fresh && mode == Live::Rewritten)
        std::memcpy(live.data(), &freshRecord, sizeof(SequenceData));
    return StoreRecord(suite, fresh && mode == Live::Untouched ? &freshRecord : live.data(),
                       outData);
}

}  // namespace

PF_Err SequenceSetup(const PF_InData* inData, PF_OutData* outData) {
    assert(inData != nullptr && outData != nullptr);
    SuiteHandler suites(inData->pica_basicP);
    return StoreRecord(suites.get<PF_HandleSuite1>(), &freshRecord, outData);
}

PF_Err SequenceResetup(const PF_InData* inData, PF_OutData* outData) {
    assert(inData != nullptr && outData != nullptr);
    SuiteHandler suites(inData->pica_basicP);
    const auto& suite = suites.get<PF_HandleSuite1>();
    // The fresh record comes first: whatever is wrong with the stored one, the instance has a
    // record.
    const PF_Err code = StoreRecord(suite, &freshRecord, outData);
    if (code != PF_Err_NONE || inData->sequence_data == nullptr) return code;
    const HandleLock stored(suite, inData->sequence_data);
    if (stored.data() == nullptr) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    if (!IsOwnRecord(suite, inData->sequence_data, stored.data())) return PF_Err_NONE;
    const HandleLock fresh(suite, outData->sequence_data);
    if (fresh.data() == nullptr) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    std::memcpy(fresh.data(), stored.data(), sizeof(SequenceData));
    return PF_Err_NONE;
}

PF_Err SequenceFlatten(const PF_InData* inData, PF_OutData* outData) {
    return StoreFlatCopy(inData, outData, Live::Rewritten);
}

#ifdef NEVREL_MULTI_FRAME
PF_Err GetFlattenedSequenceData(const PF_InData* inData, PF_OutData* outData) {
    return StoreFlatCopy(inData, outData, Live::Untouched);
}
#endif

PF_Err SequenceSetdown(const PF_InData* inData, PF_OutData* /*outData*/) {
    assert(inData != nullptr);
    if (inData->sequence_data == nullptr) return PF_Err_NONE;
    SuiteHandler suites(inData->pica_basicP);
    suites.get<PF_HandleSuite1>().host_dispose_handle(inData->sequence_data);
    return PF_Err_NONE;
}
