#include "host_kit/frame.h"

#include <algorithm>
#include <utility>

#include "host_kit/callbacks.h"

namespace host_kit {
namespace {

constexpr A_long allChannels = 0xF;

PF_LRect Intersection(const PF_LRect& a, const PF_LRect& b) {
    const PF_LRect both{std::max(a.left, b.left), std::max(a.top, b.top),
                        std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
    return both.left < both.right && both.top < both.bottom ? both : PF_LRect{};
}

}  // namespace

Frame::Frame(Instance& instance, World& input, const FrameTime& time,
             std::optional<PF_LRect> wanted)
    : instance_(instance),
      input_(input),
      time_(time),
      wanted_(wanted.value_or(PF_LRect{0, 0, input.width(), input.height()})) {}

Frame::~Frame() { deletePreRenderData(); }

PF_RenderRequest Frame::request() const {
    PF_RenderRequest request{};
    request.rect = wanted_;
    request.channel_mask = allChannels;
    return request;
}

A_short Frame::bitDepth() const { return static_cast<A_short>(PixelBytes(input_.format()) * 2); }

CommandResult Frame::preRender() {
    deletePreRenderData();
    layers_.clear();
    output_ = blankOutput;
    PF_PreRenderInput input{};
    input.output_request = request();
    input.bitdepth = bitDepth();
    PF_PreRenderCallbacks callbacks = PreRenderCallbacks();
    PF_PreRenderExtra extra{&input, &output_, &callbacks};
    CommandResult result;
    {
        Command command(instance_.effect().host(), PF_Cmd_SMART_PRE_RENDER);
        instance_.fillInData(command, time_);
        command.lendImages(input_, nullptr);
        command.values = instance_.values({});
        command.frame = this;
        result = command.run(instance_.effect().entryPoint(), Command::Params::Withheld, nullptr,
                             &extra);
        command.host.adopt(static_cast<PF_Handle>(output_.pre_render_data));
        command.expect(
            output_.pre_render_data == nullptr || output_.delete_pre_render_data_func != nullptr,
            "pre-render data without a delete function");
    }
    if (!result.ok()) deletePreRenderData();
    return result;
}

CommandResult Frame::render(World& output) {
    target_ = &output;
    PF_SmartRenderInput input{};
    input.output_request = request();
    input.bitdepth = bitDepth();
    input.pre_render_data = output_.pre_render_data;
    PF_SmartRenderCallbacks callbacks = SmartRenderCallbacks();
    PF_SmartRenderExtra extra{&input, &callbacks};
    Command command(instance_.effect().host(), PF_Cmd_SMART_RENDER);
    instance_.fillInData(command, time_);
    command.lendImages(input_, &output);
    command.frame = this;
    for (auto& [id, layer] : layers_) layer.out = false;
    return command.run(instance_.effect().entryPoint(), Command::Params::Withheld, nullptr, &extra);
}

void Frame::deletePreRenderData() {
    void* data = std::exchange(output_.pre_render_data, nullptr);
    if (data == nullptr) return;
    Host& host = instance_.effect().host();
    const auto handle = static_cast<PF_Handle>(data);
    if (output_.delete_pre_render_data_func != nullptr) {
        const Command command(host, deletePreRenderDataSelector);
        output_.delete_pre_render_data_func(data);
        command.expect(command.disturbed() || !host.handles.owns(handle),
                       "pre-render data survived its deletion");
    }
    host.disposeHandle(handle);
}

std::optional<PF_RenderRequest> Frame::layerRequest(A_long checkoutId) const {
    const auto found = layers_.find(checkoutId);
    if (found == layers_.end()) return std::nullopt;
    return found->second.request;
}

bool Frame::requestLayer(A_long checkoutId, const PF_RenderRequest& request,
                         PF_CheckoutResult& result) {
    const PF_LRect whole{0, 0, input_.width(), input_.height()};
    const PF_LRect granted = Intersection(request.rect, whole);
    Layer layer{request};
    if (granted.left < granted.right) layer.pixels = input_.part(granted);
    if (!layers_.emplace(checkoutId, layer).second) return false;
    result = {};
    result.result_rect = granted;
    result.max_result_rect = whole;
    result.par = {1, 1};
    result.ref_width = whole.right;
    result.ref_height = whole.bottom;
    return true;
}

PF_EffectWorld* Frame::checkOut(A_long checkoutId) {
    const auto found = layers_.find(checkoutId);
    if (found == layers_.end() || found->second.pixels.data == nullptr) return nullptr;
    return std::exchange(found->second.out, true) ? nullptr : &found->second.pixels;
}

PF_EffectWorld* Frame::checkIn(A_long checkoutId) {
    const auto found = layers_.find(checkoutId);
    if (found == layers_.end() || !std::exchange(found->second.out, false)) return nullptr;
    return &found->second.pixels;
}

CommandResult SmartRender(Instance& instance, World& input, World& output, const FrameTime& time) {
    Frame frame(instance, input, time);
    const CommandResult result = frame.preRender();
    return result.ok() ? frame.render(output) : result;
}

}  // namespace host_kit
