#include "command/raw_frames.h"

#include <unistd.h>

#include <array>
#include <bit>
#include <cerrno>
#include <charconv>
#include <span>
#include <string_view>
#include <utility>

#include "command/errors.h"
#include "command/files/replace_file.h"

namespace nevrel {
namespace {

static_assert(std::endian::native == std::endian::little, "samples are taken as they lie");

constexpr int largestSide = 30000;

bool TakeSide(std::string_view& text, int& side) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), side);
    if (error != std::errc{} || side < 1 || side > largestSide) return false;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return true;
}

bool TakeSign(std::string_view& text, char sign) {
    if (!text.starts_with(sign)) return false;
    text.remove_prefix(1);
    return true;
}

/// Fills `bytes` from the standard input; returns how many there were before it ended.
std::size_t ReadAll(std::span<std::byte> bytes, const std::string& frame) {
    std::size_t size = 0;
    while (size < bytes.size()) {
        const ssize_t got = read(STDIN_FILENO, bytes.data() + size, bytes.size() - size);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) ThrowSystemError(frame, "cannot be read");
        if (got == 0) break;
        size += static_cast<std::size_t>(got);
    }
    return size;
}

}  // namespace

RawFormat ParseRawFormat(const std::string& text) {
    constexpr std::array<std::pair<std::string_view, SampleType>, 3> kinds{
        {{"rgba", SampleType::UInt8},
         {"rgba64le", SampleType::UInt16},
         {"rgbaf32le", SampleType::Float}}};
    RawFormat format{};
    std::string_view rest = text;
    const bool hasSize = TakeSide(rest, format.width) && TakeSign(rest, 'x') &&
                         TakeSide(rest, format.height) && TakeSign(rest, ':');
    for (const auto& [name, samples] : kinds) {
        if (!hasSize || rest != name) continue;
        format.samples = samples;
        return format;
    }
    throw UsageError("--raw: '" + text +
                     "' is not WIDTHxHEIGHT:rgba, or with rgba64le or rgbaf32le, as in "
                     "1920x1080:rgba");
}

void SmoothRawFrames(host_kit::Instance& instance, const SmoothSettings& settings,
                     const RawFormat& format, const std::filesystem::path& maskPath) {
    const Mask mask(maskPath);
    const PartSpec spec = MakeSpec(format.width, format.height, 4, format.samples);
    Picture picture{"raw", {}, {}};
    picture.parts.push_back(MakePart(spec, false));
    const std::span bytes(picture.parts.front().samples.get(), spec.bytes());
    for (long number = 1;; ++number) {
        const std::string frame = "frame " + std::to_string(number);
        const std::size_t size = ReadAll(bytes, frame);
        if (size == 0) return;
        if (size < bytes.size()) throw PictureError(frame, "the input ends within it");
        ColorChannels channels{0, 0, 1, 2, 3, ""};
        StageTimes times;
        SmoothPart(instance, settings, {frame, frame}, mask, picture.format, picture, channels,
                   times);
        WriteAll(STDOUT_FILENO, bytes, frame);
    }
}

}  // namespace nevrel
