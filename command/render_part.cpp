#include "command/render_part.h"

#include <string>

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

void HoldBack(const std::filesystem::path& path, const World& before, World& after) {
    const Picture picture = ReadPicture(path);
    const ColorChannels channels = FindColorChannels(picture, "", path);
    const Part& mask = picture.parts[channels.part];
    if (mask.spec.width != before.width() || mask.spec.height != before.height()) {
        const auto size = [](auto width, auto height) {
            return std::to_string(width) + " x " + std::to_string(height);
        };
        throw PictureError(path, "is a mask of " + size(mask.spec.width, mask.spec.height) +
                                     " pixels for a picture of " +
                                     size(before.width(), before.height()));
    }
    ApplyMask(mask, channels, before, after);
}

}  // namespace

RenderedPart::RenderedPart(Instance& instance, const Part& part, const ColorChannels& channels,
                           std::optional<PF_PixelFormat> depth, const PicturePaths& paths,
                           StageTimes& times)
    : before_(depth ? *depth : OwnDepth(part, channels, paths.input), part.spec.width,
              part.spec.height, {.pooled = true}),
      after_(before_.format(), part.spec.width, part.spec.height, {.pooled = true}) {
    times.measure(Stage::Load, [&] { LoadPixels(part, channels, before_); });
    times.measure(Stage::Kernel, [&] { Render(instance, before_, after_, paths.input); });
    if (!paths.mask.empty()) HoldBack(paths.mask, before_, after_);
}

}  // namespace nevrel
