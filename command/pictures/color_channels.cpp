#include "command/pictures/color_channels.h"

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <iterator>
#include <string_view>
#include <vector>

#include "command/errors.h"

namespace nevrel {
namespace {

bool SameWord(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](unsigned char x, unsigned char y) {
        return std::tolower(x) == std::tolower(y);
    });
}

/// A channel's name is its layer's prefix, which ends with the last point, and the word for what it
/// holds.
std::string_view Prefix(std::string_view name) { return name.substr(0, name.rfind('.') + 1); }

int FindChannel(const PartSpec& spec, std::string_view prefix,
                std::initializer_list<std::string_view> words) {
    for (std::size_t i = 0; i < spec.channels.size(); ++i) {
        const std::string_view name = spec.channels[i].name;
        if (Prefix(name) != prefix) continue;
        for (const std::string_view word : words) {
            if (SameWord(name.substr(prefix.size()), word)) return static_cast<int>(i);
        }
    }
    return -1;
}

bool IsComplete(const ColorChannels& channels) {
    return channels.red >= 0 && channels.green >= 0 && channels.blue >= 0;
}

ColorChannels ChannelsByName(const Picture& picture, std::size_t part, const std::string& prefix) {
    const PartSpec& spec = picture.parts[part].spec;
    ColorChannels channels{part,
                           FindChannel(spec, prefix, {"R", "red"}),
                           FindChannel(spec, prefix, {"G", "green"}),
                           FindChannel(spec, prefix, {"B", "blue"}),
                           FindChannel(spec, prefix, {"A", "alpha"}),
                           prefix};
    const bool hasChroma = FindChannel(spec, prefix, {"RY", "BY"}) >= 0;
    if (!IsComplete(channels) && !hasChroma) {
        channels.red = channels.green = channels.blue = FindChannel(spec, prefix, {"Y"});
    }
    return channels;
}

/// Formats that store no channel names: colour comes first.
ColorChannels ChannelsByPlace(const Picture& picture, std::size_t part) {
    const PartSpec& spec = picture.parts[part].spec;
    if (spec.channels.size() < 3) return {part, 0, 0, 0, spec.alphaChannel, ""};
    return {part, 0, 1, 2, spec.alphaChannel, ""};
}

struct Layer {
    std::string name;
    ColorChannels channels;
};

std::string LayerName(const PartSpec& spec, const std::string& prefix) {
    if (!prefix.empty()) return prefix.substr(0, prefix.size() - 1);
    return spec.name;
}

/// Every set of colour channels in a part whose format names its channels.
void AddNamedLayers(const Picture& picture, std::size_t part, std::vector<Layer>& layers) {
    const PartSpec& spec = picture.parts[part].spec;
    std::vector<std::string> prefixes;
    for (const std::string& name : spec.channelNames()) {
        const std::string prefix(Prefix(name));
        if (std::find(prefixes.begin(), prefixes.end(), prefix) != prefixes.end()) continue;
        prefixes.push_back(prefix);
        const ColorChannels channels = ChannelsByName(picture, part, prefix);
        if (IsComplete(channels)) layers.push_back({LayerName(spec, prefix), channels});
    }
}

/// Every set of colour channels in the picture, at least one.
std::vector<Layer> Layers(const Picture& picture, const std::filesystem::path& path) {
    std::vector<Layer> layers;
    for (std::size_t part = 0; part < picture.parts.size(); ++part) {
        if (picture.format == "openexr") {
            AddNamedLayers(picture, part, layers);
        } else {
            layers.push_back({"", ChannelsByPlace(picture, part)});
        }
    }
    if (layers.empty()) {
        const std::string channels = Join(picture.parts.front().spec.channelNames());
        throw PictureError(path, "has no color channels; there are " + channels);
    }
    return layers;
}

std::string Names(const std::vector<Layer>& layers) {
    std::vector<std::string> names;
    for (const Layer& layer : layers) {
        if (!layer.name.empty()) names.push_back(layer.name);
    }
    return Join(names);
}

ColorChannels FindLayer(const std::vector<Layer>& layers, const std::string& name,
                        const std::filesystem::path& path) {
    for (const Layer& layer : layers) {
        if (layer.name == name) return layer.channels;
    }
    const std::string others = Names(layers);
    throw PictureError(
        path, "has no layer " + name + (others.empty() ? "" : "; its layers are " + others));
}

/// The layer without a name, or the only one.
ColorChannels OwnLayer(const std::vector<Layer>& layers, const std::filesystem::path& path) {
    const auto own = std::find_if(layers.begin(), layers.end(), [](const Layer& candidate) {
        return candidate.channels.prefix.empty();
    });
    if (own != layers.end()) return own->channels;
    if (layers.size() > 1)
        throw PictureError(path, "choose one of its layers with --layer: " + Names(layers));
    return layers.front().channels;
}

}  // namespace

ColorChannels FindColorChannels(const Picture& picture, const std::string& layer,
                                const std::filesystem::path& path) {
    const std::vector<Layer> layers = Layers(picture, path);
    return layer.empty() ? OwnLayer(layers, path) : FindLayer(layers, layer, path);
}

std::vector<ColorChannels> FindEveryPartsChannels(const Picture& picture,
                                                  const std::filesystem::path& path) {
    const std::vector<Layer> layers = Layers(picture, path);
    std::vector<ColorChannels> channels;
    for (std::size_t part = 0; part < picture.parts.size(); ++part) {
        std::vector<Layer> own;
        std::copy_if(layers.begin(), layers.end(), std::back_inserter(own),
                     [&](const Layer& layer) { return layer.channels.part == part; });
        if (!own.empty()) channels.push_back(OwnLayer(own, path));
    }
    return channels;
}

PF_PixelFormat OwnDepth(const Part& part, const ColorChannels& channels,
                        const std::filesystem::path& path) {
    PF_PixelFormat depth = PF_PixelFormat_ARGB32;
    for (const int channel : {channels.red, channels.green, channels.blue, channels.alpha}) {
        if (channel < 0) continue;
        const SampleType type = part.channel(channel).type;
        if (type == SampleType::UInt8) continue;
        if (type == SampleType::UInt16) {
            if (depth == PF_PixelFormat_ARGB32) depth = PF_PixelFormat_ARGB64;
        } else if (IsFloat(type)) {
            depth = PF_PixelFormat_ARGB128;
        } else {
            throw PictureError(path, std::string("its color channels hold ") + SampleName(type) +
                                         " samples, which are not supported");
        }
    }
    return depth;
}

}  // namespace nevrel
