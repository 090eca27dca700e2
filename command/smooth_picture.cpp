#include "command/smooth_picture.h"

#include <algorithm>
#include <new>
#include <system_error>

#include "command/controls.h"
#include "command/errors.h"
#include "command/files/ending_signals.h"
#include "command/pictures/color_channels.h"
#include "command/pictures/picture_library.h"
#include "command/pictures/picture_pixels.h"
#include "command/pictures/sample_types.h"
#include "command/render_part.h"

namespace nevrel {
namespace {

using host_kit::Instance;

/// Brings a part into a form that the output's format can store: its way with alpha, and one type
/// of sample where the format has only one.
void Adapt(Part& part, const ColorChannels& channels, const Picture& input,
           const std::string& format, const std::filesystem::path& path) {
    const bool associated = StoresAssociated(format, input.format, part);
    const bool mixedTypes = !part.spec.type() && format != input.format;
    if (!mixedTypes && (channels.alpha < 0 || associated == part.associated)) {
        part.associated = associated;
        return;
    }
    for (const ChannelSpec& channel : part.spec.channels) {
        if (WithSampleType(channel.type, [](auto) {})) continue;
        throw PictureError(path, std::string(format)
                                     .append(" cannot hold the samples of channel ")
                                     .append(channel.name));
    }
    part = Recast(part, channels, associated);
}

std::vector<ColorChannels> ChannelsToSmooth(const SmoothSettings& settings, const Picture& picture,
                                            const std::filesystem::path& path, Remarks& remarks) {
    if (picture.png && picture.png->isAnimated) {
        remarks.warnings.push_back(path.string() +
                                   ": only the first frame of its animation is smoothed and kept");
    }
    if (settings.allParts) return FindEveryPartsChannels(picture, path);
    const ColorChannels channels = FindColorChannels(picture, settings.layer, path);
    const std::size_t parts = picture.parts.size();
    if (parts > 1 && settings.layer.empty()) {
        remarks.warnings.push_back(path.string() + ": only part " +
                                   std::to_string(channels.part + 1) + " of " +
                                   std::to_string(parts) + " is smoothed; --all-parts is for each");
    }
    return {channels};
}

/// Values of linear light look too dark in formats whose values stand for what a screen shows.
void WarnOfLinearLight(const Part& part, const std::string& from, const PicturePaths& paths,
                       const std::string& format, Remarks& remarks) {
    const bool isForScreens = format == "png" || format == "bmp" || format == "targa";
    const auto isFloat = [](const ChannelSpec& channel) { return IsFloat(channel.type); };
    if (!isForScreens || from == format || !part.spec.isLinear) return;
    if (std::none_of(part.spec.channels.begin(), part.spec.channels.end(), isFloat)) return;
    remarks.warnings.push_back(paths.output.string() + ": holds the linear values of " +
                               paths.input.string() + " as they are, which " + format +
                               " viewers show too dark");
}

/// What the user is told of the remarks.
std::vector<std::string> Lines(const Remarks& remarks, bool verbose) {
    std::vector<std::string> lines = remarks.warnings;
    if (verbose) lines.insert(lines.end(), remarks.details.begin(), remarks.details.end());
    return lines;
}

/// Empty where the output takes the input's format.
std::string OutputFormat(const SmoothSettings& settings, const PicturePaths& paths) {
    if (paths.output.empty()) return "";
    if (paths.output != standardStream) return FormatForPath(paths.output);
    return settings.streamFormat.empty() ? "" : FormatForPath("*." + settings.streamFormat);
}

}  // namespace

bool IsPictureThere(const std::filesystem::path& output) {
    std::error_code error;
    const auto size = std::filesystem::file_size(output, error);
    return !error && size > 0;
}

void SmoothPart(Instance& instance, const SmoothSettings& settings, const PicturePaths& paths,
                const Mask& mask, const std::string& format, Picture& picture,
                ColorChannels& channels, StageTimes& times) {
    Part& part = picture.parts[channels.part];
    const RenderedPart rendered(instance, part, channels, settings.depth, paths.input, mask, times);
    settings.look.draw(instance, rendered, part, paths);
    times.measure(Stage::Store, [&] {
        Adapt(part, channels, picture, format, paths.output);
        const bool keyed = instance.param(idColorKeyEnable).u.bd.value != 0;
        if (keyed && channels.alpha < 0) AddAlpha(part, channels);
        if (part.spec.channels.size() == 2 && channels.alpha >= 0 && !HoldsGreyWithAlpha(format))
            ExpandGrey(part, channels);
        StorePixels(rendered.before(), rendered.after(), channels, part);
        const int bits = part.spec.bits;
        if (part.spec.type() == SampleType::UInt16 && bits > 8 && bits < 16)
            RoundToBits(part, bits);
    });
}

void SmoothPicture(Instance& instance, const SmoothSettings& settings, const PicturePaths& paths,
                   Remarks& remarks) try {
    std::string format = OutputFormat(settings, paths);
    Picture picture = remarks.times.measure(Stage::Decode, [&] {
        return paths.input == standardStream ? ReadStandardInput(format)
                                             : ReadPicture(paths.input, format);
    });
    if (format.empty()) format = picture.format;
    std::vector<ColorChannels> channels = ChannelsToSmooth(settings, picture, paths.input, remarks);
    if (picture.parts.size() > 1 && format != picture.format) {
        throw PictureError(paths.output, "the " + std::to_string(picture.parts.size()) +
                                             " parts of the input can only be kept as " +
                                             picture.format);
    }
    WarnOfLinearLight(picture.parts.front(), picture.format, paths, format, remarks);
    const Mask mask(paths.mask);
    for (ColorChannels& part : channels)
        SmoothPart(instance, settings, paths, mask, format, picture, part, remarks.times);
    if (paths.output.empty()) return;
    picture.format = format;
    WritePicture(picture, paths.output, settings.write, remarks);
} catch (const std::bad_alloc&) {
    throw PictureError(paths.input, "not enough memory");
}

namespace {

Outcome TrySmoothing(Instance& instance, const SmoothSettings& settings, Existing existing,
                     const PicturePaths& paths, bool verbose) {
    if (existing == Existing::Skip && IsPictureThere(paths.output))
        return {.verdict = Outcome::Verdict::Skipped, .lines = {}};
    Remarks remarks;
    Outcome outcome =
        Attempt(paths.input, [&] { SmoothPicture(instance, settings, paths, remarks); });
    if (outcome.succeeded())
        outcome = {Outcome::Verdict::Done, Lines(remarks, verbose), remarks.times};
    return outcome;
}

}  // namespace

int SmoothPictures(Instance& instance, const SmoothSettings& settings, const RunSettings& run,
                   const PictureList& pictures, const Complain& complain) {
    UseThreads(std::max(1, static_cast<int>(run.jobs / pictures.size())));
    Progress progress(run.progress, pictures.size(), complain);
    const LastWords interrupted([&progress] {
        progress.interrupt("; the same command with --skip-existing does the rest");
    });
    const auto smooth = [&](std::size_t i) {
        return TrySmoothing(instance, settings, run.existing, pictures[i], run.progress.verbose);
    };
    const auto tell = [&](std::size_t i, const Outcome& outcome) {
        progress.add(pictures[i], outcome);
        return !run.failFast || outcome.succeeded();
    };
    DoInParallel(pictures.size(), run.jobs, smooth, tell);
    progress.finish();
    return progress.status();
}

}  // namespace nevrel
