#include <unistd.h>

#include <algorithm>
#include <array>
#include <new>
#include <span>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "command/errors.h"
#include "command/files/memory_file.h"
#include "command/files/replace_file.h"
#include "command/pictures/dpx_file.h"
#include "command/pictures/picture.h"
#include "command/pictures/png_writer.h"

namespace nevrel {

bool StoresAssociated(const std::string& format, const std::string& from, const Part& part) {
    if (format == "openexr") return true;
    return part.associated && (format == "tiff" || (format == "targa" && from == "targa"));
}

bool HoldsGreyWithAlpha(const std::string& format) {
    return format == "png" || format == "tiff" || format == "openexr";
}

namespace {

/// Compressions that change samples give way to one that does not.
void KeepSamplesWhole(OIIO::ImageSpec& spec) {
    constexpr std::array<std::string_view, 6> lossy{"jpeg", "pxr24", "b44", "b44a", "dwaa", "dwab"};
    const std::string compression = spec.get_string_attribute("compression");
    const std::string_view name = std::string_view(compression).substr(0, compression.find(':'));
    if (std::find(lossy.begin(), lossy.end(), name) != lossy.end())
        spec.attribute("compression", "zip");
    // Fewer than 8 bits are too few for the blends; what has more keeps its own number.
    if (spec.format == OIIO::TypeDesc::UINT8) spec.erase_attribute("oiio:BitsPerSample");
}

/// Compression as the user wants it, of those that keep samples whole.
void SetCompression(OIIO::ImageSpec& spec, std::string_view format, int level) {
    if (format == "targa") spec.attribute("compression", level == 0 ? "none" : "rle");
    if (format == "openexr")
        spec.attribute("compression", level == 0 ? "none" : "zip:" + std::to_string(level));
    if (format != "tiff") return;
    spec.attribute("compression", level == 0 ? "none" : "zip");
    spec.attribute("tiff:zipquality", std::max(level, 1));
}

/// A picture that has no date gets the one that Exif has for an unknown date: the writers would put
/// the time of day in its place, and the same picture would give another file each time.
void KeepOutTimeOfDay(OIIO::ImageSpec& spec, std::string_view format) {
    const bool writesTimeOfDay = format == "openexr" || format == "tiff";
    if (writesTimeOfDay && spec.find_attribute("DateTime") == nullptr)
        spec.attribute("DateTime", "    :  :     :  :  ");
}

/// Rows are laid anew after writing; the writer would spoil what it pads.
void FitToDpx(OIIO::ImageSpec& spec) {
    for (const char* padding : {"dpx:EndOfLinePadding", "dpx:EndOfImagePadding"})
        spec.erase_attribute(padding);
    const int bits = spec.get_int_attribute("oiio:BitsPerSample");
    if (bits != 10 && bits != 12) spec.erase_attribute("oiio:BitsPerSample");
}

/// What the format's writer is told about a part.
OIIO::ImageSpec WritingSpec(const OIIO::ImageOutput& output, const Part& part,
                            const WriteSettings& settings) {
    OIIO::ImageSpec spec = part.spec;
    if (!output.supports("tiles")) spec.tile_width = spec.tile_height = spec.tile_depth = 0;
    spec.erase_attribute("oiio:subimages");
    spec.erase_attribute(straightAttribute);
    if (std::string_view(output.format_name()) == "dpx") FitToDpx(spec);
    KeepSamplesWhole(spec);
    if (settings.compression) SetCompression(spec, output.format_name(), *settings.compression);
    KeepOutTimeOfDay(spec, output.format_name());
    // The writer of TGA knows straight alpha only and takes colour as it is when told so; see
    // MarkAssociated.
    const bool asItIs = !part.associated || std::string_view(output.format_name()) == "targa";
    if (asItIs && spec.alpha_channel >= 0) spec.attribute(straightAttribute, 1);
    return spec;
}

bool HasDataWindow(const OIIO::ImageSpec& spec) {
    return spec.x != spec.full_x || spec.y != spec.full_y || spec.width != spec.full_width ||
           spec.height != spec.full_height;
}

/// Whether a format without channel names can tell which channel is which: one set of colour
/// channels, and nothing that only its name explains.
bool AreNamesImplied(const OIIO::ImageSpec& spec) {
    constexpr std::array<std::string_view, 10> impliedChannels{
        "R", "G", "B", "A", "Y", "red", "green", "blue", "alpha", "I"};
    const auto split = [](std::string_view name) {
        const std::size_t dot = name.rfind('.');
        return dot == std::string_view::npos ? std::pair{std::string_view(), name}
                                             : std::pair{name.substr(0, dot), name.substr(dot + 1)};
    };
    return std::all_of(
        spec.channelnames.begin(), spec.channelnames.end(), [&](std::string_view name) {
            const auto [layer, channel] = split(name);
            const bool implied = std::find(impliedChannels.begin(), impliedChannels.end(),
                                           channel) != impliedChannels.end();
            return layer == split(spec.channelnames.front()).first &&
                   (implied || channel.starts_with("channel"));
        });
}

bool HoldsChannels(const std::string& format, const OIIO::ImageSpec& spec) {
    if (format == "openexr") return true;
    if (!AreNamesImplied(spec)) return false;
    if (format == "dpx") return spec.nchannels == 1 || spec.nchannels == 3 || spec.nchannels == 4;
    return format == "tiff" || spec.nchannels <= 4;
}

[[noreturn]] void RefuseChannels(const std::filesystem::path& path, const Picture& picture,
                                 const Part& part) {
    throw PictureError(path, picture.format + " cannot hold these channels together: " +
                                 Join(part.spec.channelnames));
}

void RequireHolds(const OIIO::ImageOutput& output, const Picture& picture,
                  const std::filesystem::path& path) {
    const std::string format = picture.format;
    if (picture.parts.size() > 1 && !output.supports("multiimage")) {
        throw PictureError(path, format + " cannot hold the " +
                                     std::to_string(picture.parts.size()) +
                                     " parts of the picture");
    }
    for (const Part& part : picture.parts) {
        const bool isKeptAsChunk = format == "png" && picture.png;
        if (HasDataWindow(part.spec) && !output.supports("displaywindow") && !isKeptAsChunk) {
            throw PictureError(path, format + " cannot hold a data window of its own");
        }
        if (!HoldsChannels(format, part.spec)) RefuseChannels(path, picture, part);
    }
}

/// Sets the mark in a TGA's extension area that says that colour is multiplied by alpha. The area's
/// place stands in the footer, the last 26 bytes of the file.
void MarkAssociated(MemoryFile& targa) {
    constexpr std::size_t footerSize = 26, attributesType = 494;
    constexpr std::array premultiplied{std::byte{4}};
    const std::span<const std::byte> bytes = targa.bytes();
    if (bytes.size() < footerSize) return;
    std::size_t area = 0;
    for (std::size_t i = 4; i-- > 0;)
        area = area << 8 | std::to_integer<std::size_t>(bytes[bytes.size() - footerSize + i]);
    if (area + attributesType < bytes.size()) targa.set(area + attributesType, premultiplied);
}

/// Gives a DPX its own name, which stands in its header; the writer put the path it wrote to there.
void SetFileName(const MemoryFile& dpx, const std::string& name) {
    constexpr std::size_t fileName = 36;
    std::array<char, 100> field{};
    name.copy(field.data(), field.size() - 1);
    dpx.set(fileName, std::as_bytes(std::span(field)));
}

/// The parts of a file that is written from front to back, which is whole when its ends are there:
/// the first and the last row of every part, the later of which was written last.
std::vector<OIIO::ImageSpec> ReadEnds(const std::string& encoded, const Picture& picture) {
    std::vector<OIIO::ImageSpec> specs;
    const auto input = OIIO::ImageInput::open(encoded);
    for (int i = 0; i < static_cast<int>(picture.parts.size()); ++i) {
        bool isThere = input && input->seek_subimage(i, 0);
        if (isThere) {
            const OIIO::ImageSpec& spec = specs.emplace_back(input->spec());
            std::vector<std::byte> row(spec.scanline_bytes(true));
            for (const int y : {spec.y, spec.y + spec.height - 1}) {
                isThere =
                    isThere && input->read_scanline(y, 0, OIIO::TypeDesc::UNKNOWN, row.data());
            }
            isThere = isThere && input->geterror().empty();
        }
        if (!isThere) throw UnreadablePicture(encoded, OIIO::geterror());
    }
    return specs;
}

/// What an encoded picture holds. Throws UnreadablePicture where it is not whole.
std::vector<OIIO::ImageSpec> ReadSpecs(const std::string& encoded, const Picture& picture) {
    const bool isTiled = std::any_of(picture.parts.begin(), picture.parts.end(),
                                     [](const Part& part) { return part.spec.tile_width > 0; });
    if ((picture.format == "openexr" || picture.format == "tiff") && !isTiled)
        return ReadEnds(encoded, picture);
    std::vector<OIIO::ImageSpec> specs;
    for (const Part& part : ReadPicture(encoded).parts) specs.push_back(part.spec);
    return specs;
}

/// Writers leave out channels that they have no place for, and may not notice that a write failed.
void RequireWhole(const std::string& encoded, const Picture& picture,
                  const std::filesystem::path& path) try {
    if (picture.format == "png") {  // its encoder leaves nothing out and tells of failed writes
        static_cast<void>(ReadPngDetails(encoded));
        return;
    }
    const std::vector<OIIO::ImageSpec> found = ReadSpecs(encoded, picture);
    for (std::size_t i = 0; i < picture.parts.size(); ++i) {
        const OIIO::ImageSpec& spec = picture.parts[i].spec;
        const OIIO::ImageSpec& held = found.at(i);
        if (held.nchannels == spec.nchannels &&
            (held.alpha_channel >= 0) == (spec.alpha_channel >= 0))
            continue;
        RefuseChannels(path, picture, picture.parts[i]);
    }
} catch (const UnreadablePicture&) {
    throw PictureError(path, "cannot be encoded whole; is there a limit to file size or memory?");
}

/// The picture library's writer of the picture's format, which also knows what the format holds.
class LibraryEncoder {
  public:
    LibraryEncoder(const Picture& picture, const std::filesystem::path& path,
                   const WriteSettings& settings)
        : picture_(picture), path_(path), output_(OIIO::ImageOutput::create(picture.format)) {
        require(output_ != nullptr);
        RequireHolds(*output_, picture, path);
        for (const Part& part : picture.parts)
            specs_.push_back(WritingSpec(*output_, part, settings));
    }

    void encode(const std::string& to) {
        for (std::size_t i = 0; i < specs_.size(); ++i) {
            const OIIO::ImageSpec& spec = specs_[i];
            const OIIO::TypeDesc type =
                spec.channelformats.empty() ? spec.format : OIIO::TypeDesc::UNKNOWN;
            require(open(to, i));
            require(output_->write_image(type, picture_.parts[i].samples.get()));
        }
        require(output_->close());
    }

  private:
    [[nodiscard]] bool open(const std::string& to, std::size_t part) {
        if (part > 0) return output_->open(to, specs_[part], OIIO::ImageOutput::AppendSubimage);
        if (specs_.size() == 1 || output_->supports("appendsubimage"))
            return output_->open(to, specs_.front());
        return output_->open(to, static_cast<int>(specs_.size()), specs_.data());
    }

    void require(bool success) const {
        if (success) return;
        const std::string reason = output_ ? output_->geterror() : OIIO::geterror();
        throw PictureError(path_, "cannot be encoded: " + OneLine(reason));
    }

    const Picture& picture_;
    const std::filesystem::path& path_;
    std::unique_ptr<OIIO::ImageOutput> output_;
    std::vector<OIIO::ImageSpec> specs_;
};

void Encode(const Picture& picture, const std::filesystem::path& path,
            const WriteSettings& settings, MemoryFile& encoded, Remarks& remarks) {
    LibraryEncoder library(picture, path, settings);
    if (picture.format == "png") {
        EncodePng(picture, path, settings, encoded, remarks);
    } else {
        library.encode(encoded.path());
    }
    const Part& part = picture.parts.front();
    if (picture.format == "targa" && part.associated && part.spec.alpha_channel >= 0)
        MarkAssociated(encoded);
    if (picture.format == "dpx") {
        SetFileName(encoded, path.filename().string());
        if (!part.spec.format.is_floating_point()) LayDpxRows(part, encoded);
    }
}

}  // namespace

void WritePicture(const Picture& picture, const std::filesystem::path& path,
                  const WriteSettings& settings, Remarks& remarks) try {
    MemoryFile encoded;  // a writer's own reports of a full disk are not to be relied on
    remarks.times.measure(Stage::Encode,
                          [&] { Encode(picture, path, settings, encoded, remarks); });
    remarks.times.measure(Stage::Check, [&] { RequireWhole(encoded.path(), picture, path); });
    remarks.times.measure(Stage::Write, [&] {
        if (path == standardStream) {
            WriteAll(STDOUT_FILENO, encoded.bytes(), path);
        } else {
            ReplaceFile(path, encoded.bytes());
        }
    });
} catch (const std::bad_alloc&) {
    throw PictureError(path, "not enough memory to encode the picture");
} catch (const std::system_error& error) {
    throw PictureError(path, error.what());
}

}  // namespace nevrel
