#include "command/pictures/png_writer.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "command/pictures/picture_pixels.h"
#include "command/pictures/png_details.h"
#include "command/pictures/png_encoder.h"
#include "command/pictures/png_palette.h"

namespace nevrel {
namespace {

PngColorType TypeOfChannels(std::size_t channels) {
    constexpr std::array sampleTypes{PngColorType::Grey, PngColorType::GreyAlpha, PngColorType::Rgb,
                                     PngColorType::Rgba};
    return sampleTypes.at(channels - 1);
}

/// Pixels in the form that a PNG holds them.
struct Encoded {
    PngColorType type;
    unsigned bits;
    std::span<const std::byte> pixels;
    const IndexedPixels* indexed;
};

/// Whether colours are told in the same terms, with alpha or without.
bool HaveSameColors(PngColorType a, PngColorType b) {
    constexpr unsigned alphaBit = 4;
    return (static_cast<unsigned>(a) | alphaBit) == (static_cast<unsigned>(b) | alphaBit);
}

/// A background told as a place in the palette, told as red, green and blue of 16 bits each.
std::optional<PngChunk> BackgroundAsRgb(const PngDetails& details, PngChunk background) {
    const auto index =
        background.data.empty() ? 0 : std::to_integer<std::size_t>(background.data.front());
    if (index >= details.palette.size()) return std::nullopt;
    background.data.assign(6, std::byte{0});
    for (std::size_t c = 0; c < 3; ++c)
        background.data[2 * c + 1] = std::byte{details.palette[index][c]};
    return background;
}

/// The chunk as it is true for the form that the picture gets; nothing where it can only go.
std::optional<PngChunk> Fitted(const PngChunk& chunk, const PngDetails& details,
                               const Encoded& form) {
    const bool sameIndices = form.indexed == nullptr || form.indexed->keepsIndices;
    const bool sameBits = form.indexed != nullptr || details.bits == form.bits;
    if (chunk.type == "hIST") {
        const bool samePalette =
            form.indexed != nullptr && form.indexed->palette == details.palette;
        return samePalette ? std::optional(chunk) : std::nullopt;
    }
    if (chunk.type == "sBIT")
        return details.colorType == form.type && sameBits ? std::optional(chunk) : std::nullopt;
    if (chunk.type != "bKGD") return chunk;
    const bool wasIndex = details.colorType == PngColorType::Palette;
    if (wasIndex && form.indexed == nullptr) return BackgroundAsRgb(details, chunk);
    if (HaveSameColors(details.colorType, form.type) && sameBits && sameIndices) return chunk;
    return std::nullopt;
}

/// The chunks of the file that the picture comes from.
std::vector<PngChunk> FittingChunks(const PngDetails& details, const Encoded& form,
                                    const std::filesystem::path& path, Remarks& remarks) {
    std::vector<PngChunk> fitting;
    for (const PngChunk& chunk : details.chunks) {
        if (auto fitted = Fitted(chunk, details, form)) {
            fitting.push_back(std::move(*fitted));
        } else {
            remarks.details.push_back(path.string() + ": goes without the " + chunk.type +
                                      " of the input, whose kind of samples it does not have");
        }
    }
    return fitting;
}

/// A few strips of the picture's rows, together.
std::vector<std::byte> TakeSample(const PngRows& rows) {
    constexpr std::size_t strips = 4, rowsOfStrip = 8;
    if (rows.count <= strips * rowsOfStrip) return {rows.bytes.begin(), rows.bytes.end()};
    std::vector<std::byte> sample;
    for (std::size_t strip = 0; strip < strips; ++strip) {
        const std::size_t row = (2 * strip + 1) * (rows.count - rowsOfStrip) / (2 * strips);
        const auto taken = rows.bytes.subspan(row * rows.rowBytes(), rowsOfStrip * rows.rowBytes());
        sample.insert(sample.end(), taken.begin(), taken.end());
    }
    return sample;
}

/// Flat paint packs better and much faster as it is, shaded paint and noise as differences; which
/// it is a sample of the rows tells.
PngEffort ChooseEffort(const PngRows& rows, bool areIndices, const WriteSettings& settings) {
    PngEffort effort;
    if (settings.compression) effort.level = *settings.compression;
    if (areIndices) return effort;
    const std::vector<std::byte> bytes = TakeSample(rows);
    PngRows sample = rows;
    sample.bytes = bytes;
    sample.count = bytes.size() / rows.rowBytes();
    PngEffort other = effort;
    other.takesDifferences = true;
    const bool gains = CompressRows(sample, other).size() < CompressRows(sample, effort).size();
    return gains ? other : effort;
}

void Encode(const Encoded& form, const Picture& picture, const std::filesystem::path& path,
            const WriteSettings& settings, MemoryFile& file, Remarks& remarks) {
    const PartSpec& spec = picture.parts.front().spec;
    const bool areIndices = form.indexed != nullptr;
    const std::size_t pixelBytes = areIndices ? 1 : spec.channels.size() * form.bits / 8;
    const PngRows rows{form.pixels, static_cast<std::size_t>(spec.height), pixelBytes,
                       form.bits == 16};
    const auto compressed = CompressRows(rows, ChooseEffort(rows, areIndices, settings));
    PngPixels pixels{spec.width, spec.height, form.type, form.bits, {}, compressed};
    if (areIndices) pixels.palette = form.indexed->palette;
    WritePng(pixels,
             picture.png ? FittingChunks(*picture.png, form, path, remarks)
                         : MetadataChunks(spec.metadata),
             file);
}

}  // namespace

void EncodePng(const Picture& picture, const std::filesystem::path& path,
               const WriteSettings& settings, MemoryFile& file, Remarks& remarks) {
    const Part& part = picture.parts.front();
    if (picture.png && picture.png->colorType == PngColorType::Palette) {
        const auto indexed = IndexPixels(part, picture.png->palette);
        if (indexed) {
            Encode({PngColorType::Palette, indexed->bits, indexed->rows, &*indexed}, picture, path,
                   settings, file, remarks);
            return;
        }
        remarks.details.push_back(path.string() +
                                  ": has more than 256 colors and so no palette any more");
    }
    const bool isByte = part.spec.type() == SampleType::UInt8;
    const bool isInteger = isByte || part.spec.type() == SampleType::UInt16;
    const Part converted = isInteger ? Part{} : ToIntegers(part);
    const Part& whole = isInteger ? part : converted;
    Encode({TypeOfChannels(part.spec.channels.size()),
            isByte ? 8U : 16U,
            {whole.samples.get(), whole.spec.bytes()},
            nullptr},
           picture, path, settings, file, remarks);
}

}  // namespace nevrel
