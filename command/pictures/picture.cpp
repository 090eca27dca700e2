#include "command/pictures/picture.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>

namespace nevrel {

std::size_t PartSpec::offset(std::size_t channel) const {
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < channel; ++i) bytes += SampleBytes(channels[i].type);
    return bytes;
}

std::optional<SampleType> PartSpec::type() const {
    const auto isOther = [&](const ChannelSpec& channel) {
        return channel.type != channels.front().type;
    };
    if (std::any_of(channels.begin(), channels.end(), isOther)) return std::nullopt;
    return channels.front().type;
}

void PartSpec::setType(SampleType type) {
    for (ChannelSpec& channel : channels) channel.type = type;
}

std::vector<std::string> PartSpec::channelNames() const {
    std::vector<std::string> names;
    for (const ChannelSpec& channel : channels) names.push_back(channel.name);
    return names;
}

PartSpec MakeSpec(int width, int height, std::size_t channels, SampleType type) {
    constexpr std::array names{"R", "G", "B", "A"};
    PartSpec spec;
    spec.width = width;
    spec.height = height;
    for (std::size_t i = 0; i < channels; ++i)
        spec.channels.push_back({channels <= 2 && i == 0 ? "Y" : names.at(i), type});
    if (channels == 2) spec.channels.back().name = "A";
    if (channels % 2 == 0) spec.alphaChannel = static_cast<int>(channels) - 1;
    return spec;
}

Part MakePart(const PartSpec& spec, bool associated) {
    const std::size_t pixelBytes = std::max<std::size_t>(spec.pixelBytes(), 1);
    if (spec.pixels() > std::numeric_limits<std::ptrdiff_t>::max() / pixelBytes)
        throw std::bad_alloc();
    return {spec, std::make_unique_for_overwrite<std::byte[]>(spec.bytes()), associated};
}

}  // namespace nevrel
