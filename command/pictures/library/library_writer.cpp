#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "command/errors.h"
#include "command/pictures/dpx_file.h"
#include "command/pictures/format_limits.h"
#include "command/pictures/library/library_files.h"
#include "command/pictures/library/library_spec.h"

namespace nevrel {
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
    OIIO::ImageSpec spec = ToLibrary(part.spec);
    if (!output.supports("tiles")) spec.tile_width = spec.tile_height = spec.tile_depth = 0;
    spec.erase_attribute("oiio:subimages");
    spec.erase_attribute(straightAttribute);
    if (std::string_view(output.format_name()) == "dpx") FitToDpx(spec);
    KeepSamplesWhole(spec);
    if (settings.compression) SetCompression(spec, output.format_name(), *settings.compression);
    KeepOutTimeOfDay(spec, output.format_name());
    spec.attribute("tiff:multithread", 1);
    // The writer of TGA knows straight alpha only and takes colour as it is when told so; see
    // MarkAssociated.
    const bool asItIs = !part.associated || std::string_view(output.format_name()) == "targa";
    if (asItIs && spec.alpha_channel >= 0) spec.attribute(straightAttribute, 1);
    return spec;
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
/// the first and the last rows of every part, the later of which were written last. In compressed
/// TIFFs the library goes to a row through all before it, but straight to a strip of them.
std::vector<OIIO::ImageSpec> ReadEnds(const std::string& encoded, const Picture& picture) {
    std::vector<OIIO::ImageSpec> specs;
    const auto input = OpenWithLibrary(encoded);
    for (int i = 0; i < static_cast<int>(picture.parts.size()); ++i) {
        bool isThere = input && input->seek_subimage(i, 0);
        if (isThere) {
            const OIIO::ImageSpec& spec = specs.emplace_back(input->spec());
            const int most =
                std::clamp(spec.get_int_attribute("tiff:RowsPerStrip", 1), 1, spec.height);
            std::vector<std::byte> rows(spec.scanline_bytes(true) * static_cast<std::size_t>(most));
            for (const int y : {0, (spec.height - 1) / most * most}) {
                const int end = std::min(y + most, spec.height);
                isThere = isThere && input->read_scanlines(i, 0, spec.y + y, spec.y + end, 0, 0,
                                                           spec.nchannels, OIIO::TypeDesc::UNKNOWN,
                                                           rows.data());
            }
            isThere = isThere && input->geterror().empty();
        }
        if (!isThere) throw UnreadablePicture(encoded, OIIO::geterror());
    }
    return specs;
}

/// What an encoded picture holds. Throws UnreadablePicture where it is not whole.
std::vector<OIIO::ImageSpec> ReadSpecs(const std::string& encoded, const Picture& picture) {
    const bool isTiled =
        std::any_of(picture.parts.begin(), picture.parts.end(),
                    [](const Part& part) { return LibraryDetails(part.spec).tile_width > 0; });
    if ((picture.format == "openexr" || picture.format == "tiff") && !isTiled)
        return ReadEnds(encoded, picture);
    std::vector<OIIO::ImageSpec> specs;
    for (const Part& part : ReadWithLibrary(encoded).parts)
        specs.push_back(LibraryDetails(part.spec));
    return specs;
}

/// The library's writer of the picture's format, which also knows what the format holds.
class LibraryEncoder {
  public:
    LibraryEncoder(const Picture& picture, const std::filesystem::path& path,
                   const WriteSettings& settings)
        : picture_(picture), path_(path), output_(OIIO::ImageOutput::create(picture.format)) {
        require(output_ != nullptr);
        const auto supports = [this](const char* feature) {
            return output_->supports(feature) != 0;
        };
        RequireHolds({supports("multiimage"), supports("displaywindow")}, picture, path);
        for (const Part& part : picture.parts)
            specs_.push_back(WritingSpec(*output_, part, settings));
    }

    void encode(const std::string& to) {
        for (std::size_t i = 0; i < specs_.size(); ++i) {
            const OIIO::ImageSpec& spec = specs_[i];
            const OIIO::TypeDesc type =
                spec.channelformats.empty() ? spec.format : OIIO::TypeDesc::UNKNOWN;
            require(open(to, i));
            if (picture_.format == "tiff" && spec.tile_width > 0) {
                writeTiles(spec, picture_.parts[i]);
            } else {
                require(output_->write_image(type, picture_.parts[i].samples.get()));
            }
        }
        require(output_->close());
    }

  private:
    /// TIFF's tiles are whole at the borders too; the library would fill them up with what lies in
    /// memory.
    void writeTiles(const OIIO::ImageSpec& spec, const Part& part) const {
        const std::size_t pixelBytes = part.spec.pixelBytes();
        const auto tileBytes = static_cast<std::size_t>(spec.tile_width) * pixelBytes;
        for (int y = 0; y < spec.height; y += spec.tile_height) {
            for (int x = 0; x < spec.width; x += spec.tile_width) {
                std::vector<std::byte> tile(static_cast<std::size_t>(spec.tile_height) * tileBytes);
                const std::size_t bytes =
                    static_cast<std::size_t>(std::min(spec.tile_width, spec.width - x)) *
                    pixelBytes;
                for (int row = 0; row < std::min(spec.tile_height, spec.height - y); ++row) {
                    const std::byte* const from =
                        part.samples.get() +
                        static_cast<std::size_t>(y + row) * part.spec.rowBytes() +
                        static_cast<std::size_t>(x) * pixelBytes;
                    std::copy_n(from, bytes,
                                tile.begin() + static_cast<std::ptrdiff_t>(
                                                   static_cast<std::size_t>(row) * tileBytes));
                }
                require(
                    output_->write_tile(spec.x + x, spec.y + y, spec.z, spec.format, tile.data()));
            }
        }
    }

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

}  // namespace

void EncodeWithLibrary(const Picture& picture, const std::filesystem::path& path,
                       const WriteSettings& settings, MemoryFile& encoded) {
    LibraryEncoder(picture, path, settings).encode(encoded.path());
    const Part& part = picture.parts.front();
    if (picture.format == "targa" && part.associated && part.spec.alphaChannel >= 0)
        MarkAssociated(encoded);
    if (picture.format == "dpx") {
        SetFileName(encoded, path.filename().string());
        if (!IsFloat(part.spec.channels.front().type)) {
            const OIIO::ImageSpec& details = LibraryDetails(part.spec);
            LayDpxRows(part, details.get_string_attribute("dpx:Packing"), encoded);
        }
    }
}

/// Writers leave out channels that they have no place for, and may not notice that a write failed.
void RequireWholeByLibrary(const std::string& encoded, const Picture& picture,
                           const std::filesystem::path& path) try {
    const std::vector<OIIO::ImageSpec> found = ReadSpecs(encoded, picture);
    for (std::size_t i = 0; i < picture.parts.size(); ++i) {
        const PartSpec& spec = picture.parts[i].spec;
        const OIIO::ImageSpec& held = found.at(i);
        if (held.nchannels == std::ssize(spec.channels) &&
            (held.alpha_channel >= 0) == (spec.alphaChannel >= 0))
            continue;
        RefuseChannels(path, picture, picture.parts[i]);
    }
} catch (const UnreadablePicture&) {
    throw PictureError(path, "cannot be encoded whole; is there a limit to file size or memory?");
}

}  // namespace nevrel
