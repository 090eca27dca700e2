#include <algorithm>
#include <atomic>
#include <cassert>
#include <cstring>

#include "host/host_handle.h"
#include "host/suite_handler.h"
#include "render/param_index_map.h"
#include "render/param_values.h"
#include "render/render_commands.h"
#include "render/smart_commands.h"

namespace {

// The host calls the delete function without its input record, so the way to the handle suite is
// remembered.
std::atomic<SPBasicSuite*> latestBasicSuite{nullptr};

/// Given to the host with every pre-render handle.
void DeletePreRenderData(void* data) {
    if (data == nullptr) return;
    try {
        SuiteHandler suites(latestBasicSuite.load(std::memory_order_acquire));
        suites.get<PF_HandleSuite1>().host_dispose_handle(static_cast<PF_Handle>(data));
    } catch (...) {  // without the suite there is no way to dispose of it, and nobody to tell
    }
}

bool IsEmpty(const PF_LRect& rect) { return rect.left >= rect.right || rect.top >= rect.bottom; }

/// The smallest rectangle around both; an empty one adds nothing, but two empty ones give the
/// second.
PF_LRect Union(const PF_LRect& a, const PF_LRect& b) {
    if (IsEmpty(a)) return b;
    if (IsEmpty(b)) return a;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

/// Asks for the input layer over the area of the request, and adds what there is of it to the
/// output's area.
PF_Err CheckoutInput(const PF_InData* inData, const PF_RenderRequest& request,
                     PF_PreRenderExtra* extra) {
    PF_CheckoutResult layer{};
    const PF_Err code = extra->cb->checkout_layer(inData->effect_ref, inputLayerParam,
                                                  inputCheckoutId, &request, inData->current_time,
                                                  inData->time_step, inData->time_scale, &layer);
    if (code != PF_Err_NONE) return code;
    PF_PreRenderOutput& output = *extra->output;
    output.result_rect = Union(output.result_rect, layer.result_rect);
    output.max_result_rect = Union(output.max_result_rect, layer.max_result_rect);
    return PF_Err_NONE;
}

}  // namespace

PF_Err SmartPreRender(PF_InData* inData, PF_OutData* /*outData*/, PF_PreRenderExtra* extra) {
    assert(inData != nullptr && extra != nullptr);
    const PF_RenderRequest request = extra->input->output_request;
    SuiteHandler suites(inData->pica_basicP);
    const auto& suite = suites.get<PF_HandleSuite1>();
    NewHandle handle(suite, sizeof(PreRenderParams));
    if (handle.get() == nullptr) return PF_Err_OUT_OF_MEMORY;
    const HandleLock lock(suite, handle.get());
    if (lock.data() == nullptr) return PF_Err_NONE;

    // A frame without its values is none: the host hears of it, and gets no handle.
    PreRenderParams values{};
    if (const PF_Err code = CheckoutPreRenderParams(values, inData)) return code;
    std::memcpy(lock.data(), &values, sizeof values);
    latestBasicSuite.store(inData->pica_basicP, std::memory_order_release);
    extra->output->pre_render_data = handle.release();
    extra->output->delete_pre_render_data_func = DeletePreRenderData;
    return CheckoutInput(inData, request, extra);
}
