// Pictures in memory, sample for sample as their files hold them, and their way from and to files.
#pragma once

#include <OpenImageIO/imageio.h>

#include <cstddef>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "command/pictures/png_details.h"
#include "command/pictures/remarks.h"

namespace nevrel {

/// One image of a file: its description and its samples, row by row, each pixel's channels packed
/// together.
struct Part {
    OIIO::ImageSpec spec;
    std::unique_ptr<std::byte[]> samples;
    bool associated = false;  ///< colour is stored multiplied by alpha

    [[nodiscard]] std::size_t pixels() const {
        return static_cast<std::size_t>(spec.width) * static_cast<std::size_t>(spec.height);
    }
    [[nodiscard]] OIIO::TypeDesc channelType(int channel) const {
        return spec.channelformat(channel);
    }
};

/// A part with room for the samples that `spec` describes. Throws std::bad_alloc.
[[nodiscard]] Part MakePart(const OIIO::ImageSpec& spec, bool associated);

/// One channel of a part, pixel by pixel; samples may be unaligned.
template <typename Sample>
class ChannelView {
  public:
    ChannelView(const Part& part, int channel)
        : first_(part.samples.get() + part.spec.pixel_bytes(0, channel, true)),
          stride_(part.spec.pixel_bytes(true)) {}

    [[nodiscard]] Sample get(std::size_t pixel) const {
        Sample sample;
        std::memcpy(&sample, first_ + pixel * stride_, sizeof sample);
        return sample;
    }
    void set(std::size_t pixel, Sample sample) const {
        std::memcpy(first_ + pixel * stride_, &sample, sizeof sample);
    }

  private:
    std::byte* first_;
    std::size_t stride_;
};

/// The attribute by which the reading and writing library tells straight alpha.
inline constexpr char straightAttribute[] = "oiio:UnassociatedAlpha";

struct Picture {
    std::string format;  ///< the file format's name, e.g. "openexr"
    std::vector<Part> parts;
    std::optional<PngDetails> png;  ///< of a picture that was read from a PNG
};

/// Reads all parts of a file. Throws UnreadablePicture: missing, unreadable, truncated, or of a
/// kind not supported.
[[nodiscard]] Picture ReadPicture(const std::filesystem::path& path);

/// The same for all that the standard input gives.
[[nodiscard]] Picture ReadStandardInput();

/// The format that the path's extension asks for. Throws PictureError when it is not one of the
/// supported ones.
[[nodiscard]] std::string FormatForPath(const std::filesystem::path& path);

/// Whether a part of a picture of format `from` is stored with colour multiplied by alpha in
/// `format`: EXR always does, TIFF can say so, TGA can too but is rarely heeded, so only a TGA that
/// came that way stays so.
[[nodiscard]] bool StoresAssociated(const std::string& format, const std::string& from,
                                    const Part& part);

/// Whether a format has pictures of two channels, grey and alpha.
[[nodiscard]] bool HoldsGreyWithAlpha(const std::string& format);

/// How pictures are encoded.
struct WriteSettings {
    std::optional<int> compression;  ///< 0, none, to 9, the smallest files, in formats that have it
};

/// Encodes the picture in `picture.format` and puts it in place whole; `remarks` tells what gave
/// way to the format. Throws PictureError when the format cannot hold what the picture has, or the
/// file cannot be written.
void WritePicture(const Picture& picture, const std::filesystem::path& path,
                  const WriteSettings& settings, Remarks& remarks);

/// The path that stands for the standard input or output.
inline constexpr char standardStream[] = "-";

}  // namespace nevrel
