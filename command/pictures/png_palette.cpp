#include "command/pictures/png_palette.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstdint>
#include <unordered_map>

namespace nevrel {
namespace {

constexpr std::size_t mostColors = 256;

/// A palette in the making.
class Palette {
  public:
    explicit Palette(const std::vector<PngColor>& start) : colors_(start) {
        for (std::size_t i = 0; i < start.size(); ++i) places_.emplace(Key(start[i]), i);
    }

    /// The place of a colour, which gets one where it has none; too large a one when there is no
    /// room left.
    [[nodiscard]] std::size_t place(const PngColor& color) {
        const auto [entry, isNew] = places_.emplace(Key(color), colors_.size());
        if (isNew) colors_.push_back(color);
        return entry->second;
    }
    [[nodiscard]] const std::vector<PngColor>& colors() const { return colors_; }

  private:
    static std::uint32_t Key(const PngColor& color) { return std::bit_cast<std::uint32_t>(color); }

    std::vector<PngColor> colors_;
    std::unordered_map<std::uint32_t, std::size_t> places_;
};

PngColor ColorAt(const Part& part, std::size_t pixel) {
    const auto channels = part.spec.channels.size();
    PngColor color{0, 0, 0, 255};
    for (std::size_t c = 0; c < channels; ++c)
        color[c] = std::to_integer<std::uint8_t>(part.samples[pixel * channels + c]);
    return color;
}

/// The place of each pixel's colour; false when there are too many.
bool FindPlaces(const Part& part, Palette& palette, std::vector<std::uint8_t>& places) {
    places.clear();
    for (std::size_t i = 0; i < part.pixels(); ++i) {
        const PngColor color = ColorAt(part, i);
        const bool repeats = i > 0 && color == palette.colors()[places.back()];
        const std::size_t place = repeats ? places.back() : palette.place(color);
        if (place >= mostColors) return false;
        places.push_back(static_cast<std::uint8_t>(place));
    }
    return true;
}

unsigned IndexBits(std::size_t colors) {
    unsigned bits = 1;
    while ((1U << bits) < colors) bits *= 2;
    return bits;
}

/// Rows of indices with the first in the highest bits.
std::vector<std::byte> PackRows(const std::vector<std::uint8_t>& indices, std::size_t width,
                                unsigned bits) {
    const std::size_t rowBytes = (width * bits + 7) / 8;
    std::vector<std::byte> rows(indices.size() / width * rowBytes);
    for (std::size_t i = 0; i < indices.size(); ++i) {
        const std::size_t bit = i % width * bits;
        rows[i / width * rowBytes + bit / 8] |=
            static_cast<std::byte>(indices[i] << (8 - bits - bit % 8));
    }
    return rows;
}

}  // namespace

std::optional<IndexedPixels> IndexPixels(const Part& part, const std::vector<PngColor>& palette) {
    assert(part.spec.type() == SampleType::UInt8 && part.spec.channels.size() >= 3);
    std::vector<std::uint8_t> places;
    for (const std::vector<PngColor>& start : {palette, std::vector<PngColor>()}) {
        Palette found(start);
        if (!FindPlaces(part, found, places)) continue;
        const unsigned bits = IndexBits(found.colors().size());
        const auto width = static_cast<std::size_t>(part.spec.width);
        return IndexedPixels{found.colors(), PackRows(places, width, bits), bits, !start.empty()};
    }
    return std::nullopt;
}

}  // namespace nevrel
