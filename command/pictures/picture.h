// Pictures in memory, sample for sample as their files hold them, and their way from and to files.
#pragma once

#include <cstddef>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "command/pictures/png_details.h"
#include "command/pictures/remarks.h"
#include "command/pictures/sample_types.h"

namespace nevrel {

struct ChannelSpec {
    std::string name;
    SampleType type;
};

/// What a file says that any format can take over; empty or 0 where it says nothing.
struct Metadata {
    std::vector<char> profile;  ///< of the ICC
    double gamma = 0;           ///< by which values were encoded
    double dotsX = 0, dotsY = 0;
    bool areDotsPerMetre = false;                            ///< or by an unknown unit
    std::string date;                                        ///< as "2026:01:31 12:00:00"
    std::vector<std::pair<std::string, std::string>> texts;  ///< by PNG's keywords
};

/// What an image of a file is, beside its samples.
struct PartSpec {
    int width = 0, height = 0;
    std::vector<ChannelSpec> channels;
    int alphaChannel = -1, depthChannel = -1;  ///< negative where there is none
    int bits = 0;  ///< that 16-bit samples were widened from; 0 where the file does not tell
    bool hasDataWindow = false;  ///< the pixels are not just those that are shown
    bool isLinear = false;       ///< values are told to stand for light itself
    std::string name;
    Metadata metadata;
    /// All that the picture library knows of the file, for its writers.
    std::shared_ptr<const void> libraryDetails;

    [[nodiscard]] std::size_t pixels() const {
        return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    }
    /// Where a channel's samples lie in a pixel; of the channel behind the last one, a pixel's
    /// size.
    [[nodiscard]] std::size_t offset(std::size_t channel) const;
    [[nodiscard]] std::size_t pixelBytes() const { return offset(channels.size()); }
    [[nodiscard]] std::size_t rowBytes() const {
        return static_cast<std::size_t>(width) * pixelBytes();
    }
    [[nodiscard]] std::size_t bytes() const { return pixels() * pixelBytes(); }
    /// The type of all samples; nothing where channels have types of their own.
    [[nodiscard]] std::optional<SampleType> type() const;
    void setType(SampleType type);
    [[nodiscard]] std::vector<std::string> channelNames() const;
};

/// The description of pixels whose channels have the usual names: Y, RGB or RGBA.
[[nodiscard]] PartSpec MakeSpec(int width, int height, std::size_t channels, SampleType type);

/// One image of a file: its description and its samples, row by row, each pixel's channels packed
/// together.
struct Part {
    PartSpec spec;
    std::unique_ptr<std::byte[]> samples;
    bool associated = false;  ///< colour is stored multiplied by alpha

    [[nodiscard]] std::size_t pixels() const { return spec.pixels(); }
    [[nodiscard]] const ChannelSpec& channel(int index) const {
        return spec.channels[static_cast<std::size_t>(index)];
    }
};

/// A part with room for the samples that `spec` describes. Throws std::bad_alloc.
[[nodiscard]] Part MakePart(const PartSpec& spec, bool associated);

/// One channel of a part, pixel by pixel; samples may be unaligned.
template <typename Sample>
class ChannelView {
  public:
    ChannelView(const Part& part, int channel)
        : first_(part.samples.get() + part.spec.offset(static_cast<std::size_t>(channel))),
          stride_(part.spec.pixelBytes()) {}

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

struct Picture {
    std::string format;  ///< the file format's name, e.g. "openexr"
    std::vector<Part> parts;
    std::optional<PngDetails> png;  ///< of a picture that was read from a PNG
};

/// Reads all parts of a file, with what they need to become a picture of `format`; empty for the
/// file's own. Throws UnreadablePicture: missing, unreadable, truncated, or of a kind not
/// supported.
[[nodiscard]] Picture ReadPicture(const std::filesystem::path& path,
                                  const std::string& format = "");

/// The same for all that the standard input gives.
[[nodiscard]] Picture ReadStandardInput(const std::string& format);

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
