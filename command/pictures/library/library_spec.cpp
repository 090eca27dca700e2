#include "command/pictures/library/library_spec.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <utility>

namespace nevrel {
namespace {

/// The library's types in the order of SampleType.
constexpr std::array<OIIO::TypeDesc::BASETYPE, 11> types{
    OIIO::TypeDesc::UINT8, OIIO::TypeDesc::INT8,  OIIO::TypeDesc::UINT16, OIIO::TypeDesc::INT16,
    OIIO::TypeDesc::UINT,  OIIO::TypeDesc::INT,   OIIO::TypeDesc::UINT64, OIIO::TypeDesc::INT64,
    OIIO::TypeDesc::HALF,  OIIO::TypeDesc::FLOAT, OIIO::TypeDesc::DOUBLE};

SampleType FromLibraryType(const OIIO::TypeDesc& type) {
    const auto* const found = std::find(types.begin(), types.end(), type.basetype);
    return static_cast<SampleType>(found - types.begin());
}

OIIO::TypeDesc ToLibraryType(SampleType type) { return types.at(static_cast<std::size_t>(type)); }

void TakeResolution(const OIIO::ImageSpec& spec, Metadata& metadata) {
    const std::string unit = spec.get_string_attribute("ResolutionUnit");
    const double perMetre = unit == "in" ? 1 / 0.0254 : unit == "cm" ? 100 : 1;
    metadata.areDotsPerMetre = unit == "in" || unit == "cm";
    metadata.dotsX = spec.get_float_attribute("XResolution") * perMetre;
    metadata.dotsY = spec.get_float_attribute("YResolution") * perMetre;
}

Metadata TakeMetadata(const OIIO::ImageSpec& spec) {
    constexpr std::pair<const char*, const char*> texts[] = {{"ImageDescription", "Description"},
                                                             {"DocumentName", "Title"},
                                                             {"Artist", "Author"},
                                                             {"Copyright", "Copyright"},
                                                             {"Software", "Software"}};
    Metadata metadata;
    if (const auto* profile = spec.find_attribute("ICCProfile")) {
        metadata.profile.resize(static_cast<std::size_t>(profile->datasize()));
        std::memcpy(metadata.profile.data(), profile->data(), metadata.profile.size());
    }
    const std::string space = spec.get_string_attribute("oiio:ColorSpace");
    if (space.starts_with("Gamma")) metadata.gamma = spec.get_float_attribute("oiio:Gamma");
    TakeResolution(spec, metadata);
    metadata.date = spec.get_string_attribute("DateTime");
    for (const auto& [attribute, keyword] : texts) {
        std::string text = spec.get_string_attribute(attribute);
        if (!text.empty()) metadata.texts.emplace_back(keyword, std::move(text));
    }
    return metadata;
}

bool HasDataWindow(const OIIO::ImageSpec& spec) {
    return spec.x != spec.full_x || spec.y != spec.full_y || spec.width != spec.full_width ||
           spec.height != spec.full_height;
}

}  // namespace

PartSpec FromLibrary(const OIIO::ImageSpec& spec) {
    PartSpec part;
    part.width = spec.width;
    part.height = spec.height;
    for (int i = 0; i < spec.nchannels; ++i) {
        part.channels.push_back({spec.channelnames[static_cast<std::size_t>(i)],
                                 FromLibraryType(spec.channelformat(i))});
    }
    part.alphaChannel = spec.alpha_channel;
    part.depthChannel = spec.z_channel;
    part.bits = spec.get_int_attribute("oiio:BitsPerSample");
    part.hasDataWindow = HasDataWindow(spec);
    part.isLinear = spec.get_string_attribute("oiio:ColorSpace") == "Linear";
    part.name = spec.get_string_attribute("oiio:subimagename", spec.get_string_attribute("name"));
    part.metadata = TakeMetadata(spec);
    part.libraryDetails = std::make_shared<const OIIO::ImageSpec>(spec);
    return part;
}

OIIO::ImageSpec ToLibrary(const PartSpec& part) {
    OIIO::ImageSpec spec(part.width, part.height, static_cast<int>(part.channels.size()),
                         OIIO::TypeDesc::UINT8);
    if (part.libraryDetails) spec = LibraryDetails(part);
    spec.nchannels = static_cast<int>(part.channels.size());
    spec.channelnames = part.channelNames();
    spec.alpha_channel = part.alphaChannel;
    spec.z_channel = part.depthChannel;
    spec.channelformats.clear();
    if (const auto type = part.type()) {
        spec.format = ToLibraryType(*type);
    } else {
        for (const ChannelSpec& channel : part.channels)
            spec.channelformats.push_back(ToLibraryType(channel.type));
    }
    return spec;
}

const OIIO::ImageSpec& LibraryDetails(const PartSpec& part) {
    static const OIIO::ImageSpec none;
    const auto* details = static_cast<const OIIO::ImageSpec*>(part.libraryDetails.get());
    return details == nullptr ? none : *details;
}

}  // namespace nevrel
