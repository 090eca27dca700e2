#include "command/pictures/png_encoder.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <new>
#include <utility>

#include "command/errors.h"

namespace nevrel {
namespace {

spng_location Location(const PngChunk& chunk) {
    switch (chunk.place) {
        case PngChunk::Place::BeforePalette:
            return SPNG_AFTER_IHDR;
        case PngChunk::Place::BeforePixels:
            return SPNG_AFTER_PLTE;
        default:
            return SPNG_AFTER_IDAT;
    }
}

}  // namespace

PngEncoder::PngEncoder(const std::filesystem::path& path, MemoryFile& file, const PngEffort& effort)
    : path_(path), file_(file), context_(spng_ctx_new(SPNG_CTX_ENCODER), &spng_ctx_free) {
    if (!context_) throw std::bad_alloc();
    require(spng_set_png_stream(context_.get(), &PngEncoder::Write, this));
    require(spng_set_option(context_.get(), SPNG_IMG_COMPRESSION_LEVEL, effort.level));
    require(spng_set_option(context_.get(), SPNG_FILTER_CHOICE, effort.filters));
}

void PngEncoder::setHeader(const PartSpec& spec, PngColorType type, unsigned bits) {
    spng_ihdr header{};
    header.width = static_cast<std::uint32_t>(spec.width);
    header.height = static_cast<std::uint32_t>(spec.height);
    header.bit_depth = static_cast<std::uint8_t>(bits);
    header.color_type = static_cast<std::uint8_t>(type);
    require(spng_set_ihdr(context_.get(), &header));
}

void PngEncoder::setPalette(const std::vector<PngColor>& colors) {
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

void PngEncoder::setChunks(std::vector<PngChunk>& chunks) {
    for (PngChunk& chunk : chunks) {
        spng_unknown_chunk entry{{}, chunk.data.size(), chunk.data.data(), Location(chunk)};
        std::memcpy(entry.type, chunk.type.data(), sizeof entry.type);
        chunkList_.push_back(entry);
    }
    if (chunkList_.empty()) return;
    require(spng_set_unknown_chunks(context_.get(), chunkList_.data(),
                                    static_cast<std::uint32_t>(chunkList_.size())));
}

void PngEncoder::setMetadata(const Metadata& metadata) {
    setProfile(metadata);
    if (metadata.gamma > 0) require(spng_set_gama(context_.get(), 1.0 / metadata.gamma));
    setResolution(metadata);
    setDate(metadata.date);
    setTexts(metadata);
}

void PngEncoder::writePixels(std::span<const std::byte> pixels) {
    const int result = spng_encode_image(context_.get(), pixels.data(), pixels.size(), SPNG_FMT_PNG,
                                         SPNG_ENCODE_FINALIZE);
    if (failure_) throw std::system_error(failure_);
    require(result);
}

int PngEncoder::Write(spng_ctx*, void* self, void* bytes, std::size_t size) {
    auto& encoder = *static_cast<PngEncoder*>(self);
    try {
        encoder.file_.set(encoder.size_, {static_cast<std::byte*>(bytes), size});
    } catch (const std::system_error& error) {
        encoder.failure_ = error.code();
        return SPNG_IO_ERROR;
    }
    encoder.size_ += size;
    return 0;
}

void PngEncoder::setProfile(const Metadata& metadata) {
    if (metadata.profile.empty()) return;
    profile_ = metadata.profile;
    spng_iccp chunk{"ICC profile", profile_.size(), profile_.data()};
    require(spng_set_iccp(context_.get(), &chunk));
}

void PngEncoder::setResolution(const Metadata& metadata) {
    const auto dots = [](double number) {
        return number >= 1 && number < 1e9 ? static_cast<std::uint32_t>(std::lround(number)) : 0;
    };
    spng_phys chunk{dots(metadata.dotsX), dots(metadata.dotsY),
                    static_cast<std::uint8_t>(metadata.areDotsPerMetre ? 1 : 0)};
    if (chunk.ppu_x > 0 && chunk.ppu_y > 0) require(spng_set_phys(context_.get(), &chunk));
}

void PngEncoder::setDate(const std::string& date) {
    unsigned year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    if (std::sscanf(date.c_str(), "%4u:%2u:%2u %2u:%2u:%2u", &year, &month, &day, &hour, &minute,
                    &second) != 6)
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

void PngEncoder::setTexts(const Metadata& metadata) {
    for (const auto& [keyword, text] : metadata.texts) addText(keyword, text);
    if (texts_.empty()) return;
    for (std::size_t i = 0; i < texts_.size(); ++i) texts_[i].text = textValues_[i].data();
    require(
        spng_set_text(context_.get(), texts_.data(), static_cast<std::uint32_t>(texts_.size())));
}

void PngEncoder::addText(const std::string& keyword, const std::string& value) {
    static char none[] = "";
    const bool isAscii = std::all_of(value.begin(), value.end(), [](char c) { return c > 0; });
    spng_text chunk{};
    std::snprintf(chunk.keyword, sizeof chunk.keyword, "%s", keyword.c_str());
    chunk.type = isAscii ? SPNG_TEXT : SPNG_ITXT;
    chunk.length = value.size();
    chunk.language_tag = chunk.translated_keyword = none;
    texts_.push_back(chunk);
    textValues_.push_back(value);
}

void PngEncoder::require(int result) const {
    if (result == SPNG_EMEM) throw std::bad_alloc();
    if (result != 0)
        throw PictureError(path_, std::string("cannot be encoded: ") + spng_strerror(result));
}

}  // namespace nevrel
