#include "command/png_writer.h"

#include <spng.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <span>
#include <string>
#include <system_error>
#include <vector>

#include "command/picture_error.h"
#include "command/picture_pixels.h"
#include "command/png_details.h"
#include "command/png_palette.h"

namespace nevrel {
namespace {

/// How hard the encoder tries: more of both makes smaller files, slower.
struct Effort {
    int level = 6;  ///< of compression, 0 to 9
    int filters = SPNG_FILTER_CHOICE_ALL;
};

class Encoder {
  public:
    Encoder(const std::filesystem::path& path, MemoryFile& file, const Effort& effort)
        : path_(path), file_(file), context_(spng_ctx_new(SPNG_CTX_ENCODER), &spng_ctx_free) {
        if (!context_) throw std::bad_alloc();
        require(spng_set_png_stream(context_.get(), &Encoder::Write, this));
        require(spng_set_option(context_.get(), SPNG_IMG_COMPRESSION_LEVEL, effort.level));
        require(spng_set_option(context_.get(), SPNG_FILTER_CHOICE, effort.filters));
    }

    void setHeader(const OIIO::ImageSpec& spec, PngColorType type, unsigned bits) {
        spng_ihdr header{};
        header.width = static_cast<std::uint32_t>(spec.width);
        header.height = static_cast<std::uint32_t>(spec.height);
        header.bit_depth = static_cast<std::uint8_t>(bits);
        header.color_type = static_cast<std::uint8_t>(type);
        require(spng_set_ihdr(context_.get(), &header));
    }

    void setPalette(const std::vector<PngColor>& colors) {
        spng_plte palette{};
        spng_trns alphas{};
        for (const auto& [red, green, blue, alpha] : colors) {
            alphas.type3_alpha[palette.n_entries] = alpha;
            palette.entries[palette.n_entries++] = {red, green, blue, 0};
            if (alpha != 255) alphas.n_type3_entries = palette.n_entries;
        }
        require(spng_set_plte(context_.get(), &palette));
        if (alphas.n_type3_entries > 0) require(spng_set_trns(context_.get(), &alphas));
    }

    /// The chunks must live until the pixels are written.
    void setChunks(std::vector<PngChunk>& chunks) {
        for (PngChunk& chunk : chunks) {
            spng_unknown_chunk entry{{}, chunk.data.size(), chunk.data.data(), Location(chunk)};
            std::memcpy(entry.type, chunk.type.data(), sizeof entry.type);
            chunkList_.push_back(entry);
        }
        if (chunkList_.empty()) return;
        require(spng_set_unknown_chunks(context_.get(), chunkList_.data(),
                                        static_cast<std::uint32_t>(chunkList_.size())));
    }

    void setMetadata(const OIIO::ImageSpec& spec) {
        setProfile(spec);
        setGamma(spec);
        setResolution(spec);
        setDate(spec);
        setTexts(spec);
    }

    void writePixels(std::span<const std::byte> pixels) {
        const int result = spng_encode_image(context_.get(), pixels.data(), pixels.size(),
                                             SPNG_FMT_PNG, SPNG_ENCODE_FINALIZE);
        if (failure_) throw std::system_error(failure_);
        require(result);
    }

  private:
    static int Write(spng_ctx*, void* self, void* bytes, std::size_t size) {
        auto& encoder = *static_cast<Encoder*>(self);
        try {
            encoder.file_.set(encoder.size_, {static_cast<std::byte*>(bytes), size});
        } catch (const std::system_error& error) {
            encoder.failure_ = error.code();
            return SPNG_IO_ERROR;
        }
        encoder.size_ += size;
        return 0;
    }

    static spng_location Location(const PngChunk& chunk) {
        switch (chunk.place) {
            case PngChunk::Place::BeforePalette:
                return SPNG_AFTER_IHDR;
            case PngChunk::Place::BeforePixels:
                return SPNG_AFTER_PLTE;
            default:
                return SPNG_AFTER_IDAT;
        }
    }

    void setProfile(const OIIO::ImageSpec& spec) {
        const auto* profile = spec.find_attribute("ICCProfile");
        if (profile == nullptr) return;
        profile_.resize(profile->datasize());
        std::memcpy(profile_.data(), profile->data(), profile_.size());
        spng_iccp chunk{"ICC profile", profile_.size(), profile_.data()};
        require(spng_set_iccp(context_.get(), &chunk));
    }

    void setGamma(const OIIO::ImageSpec& spec) {
        const std::string space = spec.get_string_attribute("oiio:ColorSpace");
        const bool isTold = space.starts_with("Gamma");
        const float gamma = spec.get_float_attribute("oiio:Gamma");
        if (isTold && gamma > 0) require(spng_set_gama(context_.get(), 1.0 / gamma));
    }

    void setResolution(const OIIO::ImageSpec& spec) {
        const std::string unit = spec.get_string_attribute("ResolutionUnit");
        const double perMetre = unit == "in" ? 1 / 0.0254 : unit == "cm" ? 100 : 1;
        const auto dots = [&](const char* name) {
            const double number = spec.get_float_attribute(name) * perMetre;
            return number >= 1 && number < 1e9 ? static_cast<std::uint32_t>(std::lround(number))
                                               : 0;
        };
        spng_phys chunk{dots("XResolution"), dots("YResolution"),
                        static_cast<std::uint8_t>(unit == "in" || unit == "cm" ? 1 : 0)};
        if (chunk.ppu_x > 0 && chunk.ppu_y > 0) require(spng_set_phys(context_.get(), &chunk));
    }

    void setDate(const OIIO::ImageSpec& spec) {
        unsigned year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
        const std::string date = spec.get_string_attribute("DateTime");
        if (std::sscanf(date.c_str(), "%4u:%2u:%2u %2u:%2u:%2u", &year, &month, &day, &hour,
                        &minute, &second) != 6)
            return;
        const auto byte = [](unsigned number) { return static_cast<std::uint8_t>(number); };
        spng_time chunk{static_cast<std::uint16_t>(year),
                        byte(month),
                        byte(day),
                        byte(hour),
                        byte(minute),
                        byte(second)};
        static_cast<void>(spng_set_time(context_.get(), &chunk));  // it may be no real date
    }

    void setTexts(const OIIO::ImageSpec& spec) {
        constexpr struct {
            const char *attribute, *keyword;
        } kTexts[] = {{"ImageDescription", "Description"},
                      {"DocumentName", "Title"},
                      {"Artist", "Author"},
                      {"Copyright", "Copyright"},
                      {"Software", "Software"}};
        for (const auto& [attribute, keyword] : kTexts) {
            const std::string value = spec.get_string_attribute(attribute);
            if (!value.empty()) addText(keyword, value);
        }
        if (texts_.empty()) return;
        for (std::size_t i = 0; i < texts_.size(); ++i) texts_[i].text = textValues_[i].data();
        require(spng_set_text(context_.get(), texts_.data(),
                              static_cast<std::uint32_t>(texts_.size())));
    }

    void addText(const char* keyword, const std::string& value) {
        static char none[] = "";
        const bool isAscii = std::all_of(value.begin(), value.end(), [](char c) { return c > 0; });
        spng_text chunk{};
        std::snprintf(chunk.keyword, sizeof chunk.keyword, "%s", keyword);
        chunk.type = isAscii ? SPNG_TEXT : SPNG_ITXT;
        chunk.length = value.size();
        chunk.language_tag = chunk.translated_keyword = none;
        texts_.push_back(chunk);
        textValues_.push_back(value);
    }

    void require(int result) const {
        if (result == SPNG_EMEM) throw std::bad_alloc();
        if (result != 0)
            throw PictureError(path_, std::string("cannot be encoded: ") + spng_strerror(result));
    }

    const std::filesystem::path& path_;
    MemoryFile& file_;
    std::size_t size_ = 0;
    std::error_code failure_;
    // What the library takes by reference.
    std::vector<spng_unknown_chunk> chunkList_;
    std::vector<char> profile_;
    std::vector<spng_text> texts_;
    std::vector<std::string> textValues_;
    std::unique_ptr<spng_ctx, decltype(&spng_ctx_free)> context_;
};

PngColorType TypeOfChannels(int channels) {
    constexpr std::array kTypes{PngColorType::Grey, PngColorType::GreyAlpha, PngColorType::Rgb,
                                PngColorType::Rgba};
    return kTypes.at(static_cast<std::size_t>(channels - 1));
}

/// The chunks of the file that the picture comes from; those in terms of its kind of samples stay
/// only with it.
std::vector<PngChunk> FittingChunks(const PngDetails& details, bool sameSamples, bool samePalette,
                                    const std::filesystem::path& path, Remarks& remarks) {
    std::vector<PngChunk> kept;
    for (const PngChunk& chunk : details.chunks) {
        const bool fits = chunk.type == "bKGD" || chunk.type == "sBIT" ? sameSamples
                          : chunk.type == "hIST"                       ? samePalette
                                                                       : true;
        if (fits) {
            kept.push_back(chunk);
        } else {
            remarks.details.push_back(path.string() + ": goes without the " + chunk.type +
                                      " of the input, whose kind of samples it does not have");
        }
    }
    return kept;
}

/// Pixels in the form that a PNG holds them.
struct Encoded {
    PngColorType type;
    unsigned bits;
    std::span<const std::byte> pixels;
    const IndexedPixels* indexed;
};

void Encode(const Encoded& form, const Picture& picture, const std::filesystem::path& path,
            MemoryFile& file, Remarks& remarks) {
    const OIIO::ImageSpec& spec = picture.parts.front().spec;
    Encoder encoder(path, file, Effort{});
    encoder.setHeader(spec, form.type, form.bits);
    if (form.indexed != nullptr) encoder.setPalette(form.indexed->palette);
    std::vector<PngChunk> chunks;
    if (picture.png) {
        const bool sameSamples =
            picture.png->colorType == form.type &&
            (form.indexed != nullptr ? form.indexed->keepsIndices : picture.png->bits == form.bits);
        const bool samePalette =
            form.indexed != nullptr && form.indexed->palette == picture.png->palette;
        chunks = FittingChunks(*picture.png, sameSamples, samePalette, path, remarks);
        encoder.setChunks(chunks);
    } else {
        encoder.setMetadata(spec);
    }
    encoder.writePixels(form.pixels);
}

}  // namespace

void EncodePng(const Picture& picture, const std::filesystem::path& path, MemoryFile& file,
               Remarks& remarks) {
    const Part& part = picture.parts.front();
    if (picture.png && picture.png->colorType == PngColorType::Palette) {
        const auto indexed = IndexPixels(part, picture.png->palette);
        if (indexed) {
            Encode({PngColorType::Palette, indexed->bits, indexed->rows, &*indexed}, picture, path,
                   file, remarks);
            return;
        }
        remarks.details.push_back(path.string() +
                                  ": has more than 256 colors and so no palette any more");
    }
    const bool isByte = part.spec.format == OIIO::TypeDesc::UINT8;
    const bool isInteger = isByte || part.spec.format == OIIO::TypeDesc::UINT16;
    const Part converted = isInteger ? Part{} : ToIntegers(part);
    const Part& whole = isInteger ? part : converted;
    const auto size = static_cast<std::size_t>(whole.spec.image_bytes(true));
    Encode({TypeOfChannels(part.spec.nchannels),
            isByte ? 8U : 16U,
            {whole.samples.get(), size},
            nullptr},
           picture, path, file, remarks);
}

}  // namespace nevrel
