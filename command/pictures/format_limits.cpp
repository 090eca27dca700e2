#include "command/pictures/format_limits.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "command/errors.h"

namespace nevrel {
namespace {

/// Whether a format without channel names can tell which channel is which: one set of colour
/// channels, and nothing that only its name explains.
bool AreNamesImplied(const std::vector<std::string>& names) {
    constexpr std::array<std::string_view, 10> impliedChannels{
        "R", "G", "B", "A", "Y", "red", "green", "blue", "alpha", "I"};
    const auto split = [](std::string_view name) {
        const std::size_t dot = name.rfind('.');
        return dot == std::string_view::npos ? std::pair{std::string_view(), name}
                                             : std::pair{name.substr(0, dot), name.substr(dot + 1)};
    };
    return std::all_of(names.begin(), names.end(), [&](std::string_view name) {
        const auto [layer, channel] = split(name);
        const bool implied = std::find(impliedChannels.begin(), impliedChannels.end(), channel) !=
                             impliedChannels.end();
        return layer == split(names.front()).first && (implied || channel.starts_with("channel"));
    });
}

bool HoldsChannels(const std::string& format, const PartSpec& spec) {
    const std::size_t count = spec.channels.size();
    if (format == "openexr") return true;
    if (!AreNamesImplied(spec.channelNames())) return false;
    if (format == "dpx") return count == 1 || count == 3 || count == 4;
    return format == "tiff" || count <= 4;
}

}  // namespace

void RequireHolds(const FormatLimits& limits, const Picture& picture,
                  const std::filesystem::path& path) {
    const std::string& format = picture.format;
    if (picture.parts.size() > 1 && !limits.holdsParts) {
        throw PictureError(path, format + " cannot hold the " +
                                     std::to_string(picture.parts.size()) +
                                     " parts of the picture");
    }
    for (const Part& part : picture.parts) {
        const bool isKeptAsChunk = format == "png" && picture.png;
        if (part.spec.hasDataWindow && !limits.holdsDataWindow && !isKeptAsChunk) {
            throw PictureError(path, format + " cannot hold a data window of its own");
        }
        if (!HoldsChannels(format, part.spec)) RefuseChannels(path, picture, part);
    }
}

void RefuseChannels(const std::filesystem::path& path, const Picture& picture, const Part& part) {
    throw PictureError(path, picture.format + " cannot hold these channels together: " +
                                 Join(part.spec.channelNames()));
}

}  // namespace nevrel
