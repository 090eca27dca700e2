#include "command/render_part.h"

#include "command/errors.h"
#include "command/pictures/picture_pixels.h"
#include "command/session.h"
#include "host_kit/frame.h"

namespace nevrel {
namespace {

using host_kit::CommandResult;
using host_kit::Frame;
using host_kit::Instance;
using host_kit::World;

void Render(Instance& instance, World& input, World& output, const std::filesystem::path& path) {
    Frame frame(instance, input);
    const auto require = [&](const CommandResult& result) {
        if (!result.ok()) throw PictureError(path, "smoothing " + FailureText(result));
    };
    require(frame.preRender());
    const PF_LRect& area = frame.preRenderOutput().result_rect;
    const bool whole = area.left == 0 && area.top == 0 && area.right == input.width() &&
                       area.bottom == input.height();
    if (!whole || frame.preRenderOutput().pre_render_data == nullptr) {
        throw PictureError(path, "smoothing failed: the module did not prepare the whole picture");
    }
    require(frame.render(output));
}

}  // namespace

RenderedPart::RenderedPart(Instance& instance, const Part& part, const ColorChannels& channels,
                           std::optional<PF_PixelFormat> depth, const std::filesystem::path& path,
                           const Mask& mask, StageTimes& times)
    : before_(depth ? *depth : OwnDepth(part, channels, path), part.spec.width, part.spec.height,
              {.pooled = true}),
      after_(before_.format(), part.spec.width, part.spec.height, {.pooled = true}) {
    times.measure(Stage::Load, [&] { LoadPixels(part, channels, before_); });
    times.measure(Stage::Kernel, [&] { Render(instance, before_, after_, path); });
    mask.holdBack(before_, after_);
}

}  // namespace nevrel
