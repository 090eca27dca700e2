#include "standalone/nevrel/smooth_picture.h"

#include <algorithm>
#include <new>

#include "standalone/frame.h"
#include "standalone/nevrel/color_channels.h"
#include "standalone/nevrel/controls.h"
#include "standalone/nevrel/picture_error.h"
#include "standalone/nevrel/picture_pixels.h"
#include "standalone/nevrel/sample_types.h"
#include "standalone/nevrel/session.h"

namespace nevrel {
namespace {

using standalone::CommandResult;
using standalone::Frame;
using standalone::Instance;
using standalone::World;

/// The same file can have several names, so names are not compared.
void RequireOtherFile(const SmoothJob& job) {
    std::error_code error;
    if (std::filesystem::equivalent(job.input, job.output, error)) {
        throw PictureError(job.output, "is the input itself; choose another output");
    }
}

void Render(Instance& instance, World& input, World& output, const std::filesystem::path& path) {
    Frame frame(instance, input);
    const auto require = [&](const CommandResult& result) {
        if (!result.ok()) throw PictureError(path, "smoothing " + FailureText(result));
    };
    require(frame.preRender());
    const PF_LRect& area = frame.preRenderOutput().result_rect;
    const bool whole =
        area.left == 0 && area.top == 0 && area.right == input.width() && area.bottom == input.height();
    if (!whole || frame.preRenderOutput().pre_render_data == nullptr) {
        throw PictureError(path, "smoothing failed: the module did not prepare the whole picture");
    }
    require(frame.render(output));
}

/// Brings a part into a form that the output's format can store: its way with alpha, and one type of sample
/// where the format has only one.
void Adapt(Part& part, const ColorChannels& channels, const Picture& input, const std::string& format,
           const std::filesystem::path& path) {
    const bool associated = StoresAssociated(format, input.format, part);
    const bool mixedTypes = !part.spec.channelformats.empty() && format != input.format;
    if (!mixedTypes && (channels.alpha < 0 || associated == part.associated)) {
        part.associated = associated;
        return;
    }
    for (int channel = 0; channel < part.spec.nchannels; ++channel) {
        if (WithSampleType(part.channelType(channel), [](auto) {})) continue;
        throw PictureError(path, std::string(format)
                                     .append(" cannot hold the samples of channel ")
                                     .append(part.spec.channelnames[static_cast<std::size_t>(channel)]));
    }
    part = Recast(part, channels, associated);
}

}  // namespace

void SmoothPicture(Instance& instance, const SmoothJob& job) try {
    const std::string format = FormatForPath(job.output);
    RequireOtherFile(job);
    Picture picture = ReadPicture(job.input);
    ColorChannels channels = FindColorChannels(picture, job.layer, job.input);
    if (picture.parts.size() > 1 && format != picture.format) {
        throw PictureError(job.output, "the " + std::to_string(picture.parts.size()) +
                                           " parts of the input can only be kept as " + picture.format);
    }
    Part& part = picture.parts[channels.part];
    const PF_PixelFormat depth = job.depth.value_or(OwnDepth(part, channels, job.input));

    World input(depth, part.spec.width, part.spec.height);
    World output(depth, part.spec.width, part.spec.height);
    LoadPixels(part, channels, input);
    Render(instance, input, output, job.input);

    Adapt(part, channels, picture, format, job.output);
    const bool keyed = instance.param(kColorKeyEnable).u.bd.value != 0;
    if (keyed && channels.alpha < 0) AddAlpha(part, channels);
    if (part.spec.nchannels == 2 && channels.alpha >= 0 && !HoldsGreyWithAlpha(format))
        ExpandGrey(part, channels);
    StorePixels(input, output, channels, part);
    picture.format = format;
    WritePicture(picture, job.output);
} catch (const std::bad_alloc&) {
    throw PictureError(job.input, "not enough memory");
}

}  // namespace nevrel
