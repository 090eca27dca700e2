#include "command/pictures/png_reader.h"

#include <spng.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>
#include <string>

#include "command/errors.h"
#include "command/pictures/file_numbers.h"
#include "command/pictures/png_inflate.h"

namespace nevrel {
namespace {

/// The form in which the decoder gives pixels.
struct Form {
    std::size_t channels;
    SampleType type;
    spng_format format;
};

Form FormOf(const PngDetails& details, bool hasTransparency) {
    const bool isWide = details.bits == 16;
    const SampleType type = isWide ? SampleType::UInt16 : SampleType::UInt8;
    switch (details.colorType) {
        case PngColorType::Grey:
            if (hasTransparency) return {2, type, isWide ? SPNG_FMT_GA16 : SPNG_FMT_GA8};
            return {1, type, isWide ? SPNG_FMT_PNG : SPNG_FMT_G8};
        case PngColorType::GreyAlpha:
            return {2, type, SPNG_FMT_PNG};
        case PngColorType::Rgba:
            return {4, type, SPNG_FMT_PNG};
        default:
            if (hasTransparency) return {4, type, isWide ? SPNG_FMT_RGBA16 : SPNG_FMT_RGBA8};
            return {3, type, isWide ? SPNG_FMT_PNG : SPNG_FMT_RGB8};
    }
}

/// Whether the file tells that values are proportional to light.
bool IsLinear(const std::vector<PngChunk>& chunks) {
    const auto find = [&](const char* type) {
        return std::find_if(chunks.begin(), chunks.end(),
                            [&](const PngChunk& chunk) { return chunk.type == type; });
    };
    const auto gamma = find("gAMA");
    if (gamma == chunks.end() || find("sRGB") != chunks.end()) return false;
    constexpr double one = 100000, hundredth = one / 100;
    const auto number = Number(std::span<const std::byte>(gamma->data), ByteOrder::BigEndian);
    return std::abs(static_cast<double>(number) - one) <= hundredth;
}

class Decoder {
  public:
    Decoder(std::span<const std::byte> file, int flags, const std::filesystem::path& path)
        : path_(path), context_(spng_ctx_new(flags), &spng_ctx_free) {
        if (!context_) throw std::bad_alloc();
        require(spng_set_png_buffer(context_.get(), file.data(), file.size()));
        require(spng_set_crc_action(context_.get(), SPNG_CRC_USE, SPNG_CRC_USE));
    }

    [[nodiscard]] Part read(const PngDetails& details) {
        spng_ihdr header{};
        require(spng_get_ihdr(context_.get(), &header));
        spng_trns transparency{};
        const int found = spng_get_trns(context_.get(), &transparency);
        if (found != SPNG_ECHUNKAVAIL) require(found);
        const Form form = FormOf(details, found == 0);
        PartSpec spec = MakeSpec(static_cast<int>(header.width), static_cast<int>(header.height),
                                 form.channels, form.type);
        spec.isLinear = IsLinear(details.chunks);
        Part part = MakePart(spec, false);
        const int flags = found == 0 ? SPNG_DECODE_TRNS : 0;
        require(spng_decode_image(context_.get(), part.samples.get(), part.spec.bytes(),
                                  form.format, flags));
        return part;
    }

  private:
    void require(int result) const {
        if (result == SPNG_EMEM) throw std::bad_alloc();
        if (result != 0) {
            throw UnreadablePicture(path_,
                                    std::string("damaged or truncated: ") + spng_strerror(result));
        }
    }

    const std::filesystem::path& path_;
    std::unique_ptr<spng_ctx, decltype(&spng_ctx_free)> context_;
};

}  // namespace

Part ReadPngPart(std::span<const std::byte> file, const std::vector<PngChunkView>& chunks,
                 const PngDetails& details, const std::filesystem::path& path) {
    const auto inflated = InflatePng(file, chunks, path);
    if (!inflated) return Decoder(file, 0, path).read(details);
    return Decoder(*inflated, SPNG_CTX_IGNORE_ADLER32, path).read(details);
}

}  // namespace nevrel
