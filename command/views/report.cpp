#include "command/views/report.h"

#include <array>
#include <cstdio>
#include <span>
#include <string>
#include <vector>

#include "command/errors.h"
#include "command/files/ending_signals.h"
#include "command/files/memory_file.h"
#include "command/files/replace_file.h"
#include "command/json.h"
#include "command/pictures/png_writer.h"
#include "command/render_part.h"
#include "command/views/edge_marks.h"
#include "report_page.h"

namespace nevrel {
namespace {

using host_kit::Instance;

/// RFC 4648.
std::string Base64(std::span<const std::byte> bytes) {
    constexpr char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k)
            group = group << 8 | (k < count ? std::to_integer<std::uint32_t>(bytes[i + k]) : 0);
        for (std::size_t k = 0; k < 4; ++k)
            text += k <= count ? digits[group >> (18 - 6 * k) & 63] : '=';
    }
    return text;
}

std::string PngText(const Picture& picture, const std::filesystem::path& path) {
    MemoryFile file;
    Remarks remarks;
    EncodePng(picture, path, {}, file, remarks);
    return JsonString(Base64(file.bytes()));
}

Picture GreyPicture(const EdgeMarks& marks) {
    Picture picture{"png", {}, {}};
    picture.parts.push_back(
        MakePart(MakeSpec(marks.width, marks.height, 1, SampleType::UInt8), false));
    std::memcpy(picture.parts.front().samples.get(), marks.bytes.data(), marks.bytes.size());
    return picture;
}

/// The script that gives the page a picture.
std::string FrameScript(Instance& instance, const SmoothSettings& settings,
                        const PicturePaths& paths, StageTimes& times) {
    const Picture picture = times.measure(Stage::Decode, [&] { return ReadPicture(paths.input); });
    const ColorChannels channels = FindColorChannels(picture, settings.layer, paths.input);
    const Part& part = picture.parts[channels.part];
    const RenderedPart rendered(instance, part, channels, settings.depth, paths.input,
                                Mask(paths.mask), times);
    return times.measure(Stage::Encode, [&] {
        const auto png = [&](const Picture& shown) { return PngText(shown, paths.input); };
        return "<script>pictures.push({name: " + JsonString(paths.input.string()) +
               ",\nbefore: " + png(Show(rendered.before(), part).picture()) +
               ",\nafter: " + png(Show(rendered.after(), part).picture()) +
               ",\nmarks: " + png(GreyPicture(FindEdgeMarks(rendered.before(), instance))) +
               "});</script>\n";
    });
}

std::string ColorList() {
    std::string list = "[";
    for (const Color& color : MarkColors()) {
        std::array<char, 16> text{};
        std::snprintf(text.data(), text.size(), "\"#%02x%02x%02x\",", color.red, color.green,
                      color.blue);
        list += text.data();
    }
    list.back() = ']';
    return list;
}

/// `text` with what stands in place of `mark`, which it has.
std::string Insert(std::string text, std::string_view mark, const std::string& what) {
    return text.replace(text.find(mark), mark.size(), what);
}

}  // namespace

int MakeReport(Instance& instance, const SmoothSettings& settings, const RunSettings& run,
               const PictureList& pictures, const std::filesystem::path& page,
               const Complain& complain) {
    Progress progress(run.progress, pictures.size(), complain);
    const LastWords interrupted([&progress] { progress.interrupt(", and no page is made"); });
    std::vector<std::string> made(pictures.size());
    std::string frames;
    const auto work = [&](std::size_t i) {
        StageTimes times;
        Outcome outcome = Attempt(pictures[i].input, [&] {
            made[i] = FrameScript(instance, settings, pictures[i], times);
        });
        outcome.times = times;
        return outcome;
    };
    const auto tell = [&](std::size_t i, const Outcome& outcome) {
        progress.add(pictures[i], outcome);
        frames += made[i];
        made[i] = {};
        return !run.failFast || outcome.succeeded();
    };
    DoInParallel(pictures.size(), run.jobs, work, tell);
    progress.finish();
    if (frames.empty()) return progress.status();
    const std::string text =
        Insert(Insert(reportPage, "@colors@", ColorList()), "@frames@", frames);
    ReplaceFile(page, std::as_bytes(std::span(text)));
    return progress.status();
}

}  // namespace nevrel
