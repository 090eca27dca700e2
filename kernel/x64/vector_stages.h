// The stages in vector instructions, written once for every set of instructions.h. Internal linkage
// throughout, see there.
#pragma once

#include <cstring>
#include <initializer_list>
#include <type_traits>

#include "kernel/pass/windows.h"
#include "kernel/x64/instructions.h"
#include "kernel/x64/x64_forms.h"

// NOLINTBEGIN(misc-definitions-in-headers): each file that includes this has its own
namespace {

// Cells that are scanned at once; a multiple of the four columns whose diagonals depend on each
// other.
constexpr int block = 32;
constexpr std::uint32_t everyFourth = 0x11111111;

/// Which pairs p[i], q[i] form an edge, one bit each, for as many pixels as a vector has 32-bit
/// lanes: the depths' own tests.
template <typename Isa>
struct EdgePairs8 {
    using Pixel = ::Pixel8;
    using Vector = typename Isa::Vector;

    explicit EdgePairs8(std::int32_t threshold) : threshold_(Isa::fill(threshold)) {}

    [[nodiscard]] std::uint32_t operator()(const Pixel* p, const Pixel* q) const {
        const Vector d = Isa::difference8(visible(Isa::load(p)), visible(Isa::load(q)));
        const Vector pairs = Isa::add16(Isa::bitAnd(d, Isa::fill(0x00FF00FF)), Isa::highBytes16(d));
        return Isa::signs(Isa::greater32(Isa::addPairs16(pairs), threshold_));
    }

  private:
    // A transparent pixel counts as all zero; alpha is a pixel's lowest byte.
    static Vector visible(Vector v) {
        return Isa::without(v, Isa::equal32(Isa::bitAnd(v, Isa::fill(0xFF)), Isa::zero()));
    }

    Vector threshold_;
};

template <typename Isa>
struct EdgePairs16 {
    using Pixel = ::Pixel16;
    using Vector = typename Isa::Vector;

    explicit EdgePairs16(std::int32_t threshold) : threshold_(Isa::fill(threshold)) {}

    [[nodiscard]] std::uint32_t operator()(const Pixel* p, const Pixel* q) const {
        constexpr int half = Isa::bytes / 8;
        const Vector sums = Isa::lowHalves(distances(p, q), distances(p + half, q + half));
        return Isa::signs(Isa::greater32(sums, threshold_));
    }

  private:
    // The distances of a vector of pixels, each in the low half of 64 bits.
    static Vector distances(const Pixel* p, const Pixel* q) {
        const Vector d = Isa::difference16(visible(Isa::load(p)), visible(Isa::load(q)));
        const Vector pairs = Isa::add32(Isa::bitAnd(d, Isa::fill(0xFFFF)), Isa::highWords32(d));
        return Isa::add32(pairs, Isa::highHalves64(pairs));
    }
    static Vector visible(Vector v) {
        return Isa::without(v, Isa::repeatLowestWord(Isa::equal16(v, Isa::zero())));
    }

    Vector threshold_;
};

template <typename Isa>
struct EdgePairsFloat {
    using Pixel = ::PixelFloat;
    using Vector = typename Isa::Vector;
    using Floats = typename Isa::Floats;

    explicit EdgePairsFloat(float threshold) : threshold_(Isa::fillFloat(threshold)) {}

    // What is left of the threshold is never below zero for identical pixels, so they need no test
    // of their own.
    [[nodiscard]] std::uint32_t operator()(const Pixel* p, const Pixel* q) const {
        Floats a[4];
        Floats b[4];
        Isa::loadChannels(&p->alpha, a);
        Isa::loadChannels(&q->alpha, b);
        const Floats zero = Isa::fillFloat(0.0F);
        const Vector clearA = Isa::equal(a[alpha], zero);
        const Vector clearB = Isa::equal(b[alpha], zero);
        const Vector differs = Isa::less(restOfDifference(a, b), zero);
        const Vector aShows = Isa::less(restOfPixel(a), zero);
        const Vector bShows = Isa::less(restOfPixel(b), zero);
        const Vector bothVisible = Isa::without(Isa::without(differs, clearA), clearB);
        const Vector onlyA = Isa::without(Isa::bitAnd(aShows, clearB), clearA);
        const Vector onlyB = Isa::without(Isa::bitAnd(bShows, clearA), clearB);
        return Isa::signs(Isa::bitOr(bothVisible, Isa::bitOr(onlyA, onlyB)));
    }

  private:
    enum Channel { alpha, red, green, blue };

    [[nodiscard]] Floats restOfDifference(const Floats a[4], const Floats b[4]) const {
        Floats rest = threshold_;
        for (const Channel channel : {red, green, blue, alpha}) {
            rest = Isa::subtract(rest, Isa::magnitude(Isa::subtract(a[channel], b[channel])));
        }
        return rest;
    }

    [[nodiscard]] Floats restOfPixel(const Floats a[4]) const {
        return Isa::subtract(threshold_,
                             Isa::add(Isa::add(Isa::add(a[green], a[red]), a[blue]), a[alpha]));
    }

    Floats threshold_;
};

/// A vector full of one pixel.
template <typename Isa, typename Pixel>
typename Isa::Vector RepeatPixel(const Pixel& pixel) {
    Pixel pixels[Isa::bytes / sizeof(Pixel)];
    for (Pixel& p : pixels) p = pixel;
    return Isa::load(pixels);
}

/// Whether all pixels of the cells at row[0], row[1], ... are of one colour.
template <typename Isa, int cells, typename Pixel>
bool IsBlank(const Pixel* row, const Pixel* below) {
    const auto* upper = reinterpret_cast<const char*>(row);
    const auto* lower = reinterpret_cast<const char*>(below);
    typename Isa::Vector differences = Isa::zero();
    for (int i = 0; i < cells * int{sizeof(Pixel)}; i += Isa::bytes) {
        const auto here = Isa::load(upper + i);
        const auto right = Isa::load(upper + i + sizeof(Pixel));
        const auto down = Isa::load(lower + i);
        differences =
            Isa::bitOr(differences, Isa::bitOr(Isa::bitXor(here, right), Isa::bitXor(here, down)));
    }
    // The last cell's lower right pixel is in neither comparison.
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): the bytes are what counts
    return Isa::isZero(differences) && std::memcmp(row + cells, below + cells, sizeof(Pixel)) == 0;
}

struct CellBits {
    std::uint32_t right = 0;
    std::uint32_t down = 0;
    std::uint32_t diagonal = 0;
    std::uint32_t antiDiagonal = 0;
};

template <typename Isa, typename Pairs, typename Pixel>
CellBits ScanBlock(const Pairs& pairs, const Pixel* row, const Pixel* below) {
    CellBits cells;
    constexpr int lanes = Isa::bytes / 4;
    for (int i = 0; i < block; i += lanes) {
        if (IsBlank<Isa, lanes>(row + i, below + i)) continue;
        cells.right |= pairs(row + i, row + i + 1) << i;
        cells.down |= pairs(row + i, below + i) << i;
        cells.diagonal |= pairs(row + i, below + i + 1) << i;
        cells.antiDiagonal |= pairs(row + i + 1, below + i) << i;
    }
    return cells;
}

/// Drops the diagonals that the order of the tests leaves out: in a group of four cells those
/// before the first straight edge, as seen one cell ahead, but never the last cell's. `ungrouped`
/// are the cells behind the last whole group.
CellBits KeepTestedDiagonals(CellBits cells, std::uint32_t ungrouped) {
    const std::uint32_t straight = cells.right | cells.down;
    const std::uint32_t first = straight | straight >> 1;
    const std::uint32_t second = first | straight << 1;
    const std::uint32_t third = second | straight << 2;
    const std::uint32_t tested = ungrouped | (first & everyFourth) | (second & everyFourth << 1) |
                                 (third & everyFourth << 2) | everyFourth << 3;
    cells.diagonal &= tested;
    cells.antiDiagonal &= tested;
    return cells;
}

template <typename Isa>
void StoreFlags(const CellBits& cells, std::uint8_t* flags) {
    constexpr int parts = block / Isa::bytes;
    typename Isa::Vector r[parts];
    typename Isa::Vector d[parts];
    typename Isa::Vector g[parts];
    typename Isa::Vector a[parts];
    Isa::expand(cells.right, EdgeRight, r);
    Isa::expand(cells.down, EdgeDown, d);
    Isa::expand(cells.diagonal, EdgeDiagonal, g);
    Isa::expand(cells.antiDiagonal, EdgeAntiDiagonal, a);
    for (int i = 0; i < parts; ++i) {
        Isa::store(flags + i * Isa::bytes,
                   Isa::bitOr(Isa::bitOr(r[i], d[i]), Isa::bitOr(g[i], a[i])));
    }
}

template <typename Isa, typename Pairs, typename Pixel = typename Pairs::Pixel>
void ScanRowWith(const Pixel* row, const Pixel* below, int width, ThresholdOf<Pixel> threshold,
                 std::uint8_t* flags) {
    const Pairs pairs(threshold);
    const int cells = width - 1;
    int x = 0;
    for (; x + block <= cells; x += block) {
        PrefetchFarAhead<Isa, block* int{sizeof(Pixel)}>(below + x);
        const bool blank = IsBlank<Isa, block>(row + x, below + x);
        StoreFlags<typename Isa::Narrow>(
            blank ? CellBits{} : KeepTestedDiagonals(ScanBlock<Isa>(pairs, row + x, below + x), 0),
            flags + x);
    }
    if (x == cells) return;
    // The rest of the cells are scanned as the end of a block of their own, so that no pixel behind
    // the row is read.
    const int shift = x + block - cells;
    CellBits last = ScanBlock<Isa>(pairs, row + x - shift, below + x - shift);
    last = {last.right >> shift, last.down >> shift, last.diagonal >> shift,
            last.antiDiagonal >> shift};
    const int grouped = (cells & ~3) - x;
    StoreFlags<typename Isa::Narrow>(KeepTestedDiagonals(last, ~0U << grouped), flags + x);
}

/// Which pixels of a vector differ from the key colour by more than its tolerance: lanes of ones,
/// of which those of the alpha channels count. The depths' own tests.
template <typename Isa, typename IntegerPixel>
class KeyMisses {
    using Vector = typename Isa::Vector;

  public:
    using Pixel = IntegerPixel;
    using Key = IntegerKey;

    explicit KeyMisses(const Key& key)
        : tolerance_(Isa::fill(key.tolerance)), color_(RepeatPixel<Isa>(pixelOf(key))) {}

    [[nodiscard]] Vector operator()(Vector pixels) const {
        return Isa::greater32(distances(pixels), tolerance_);
    }

  private:
    // The colour's channels are in the pixel's range.
    static Pixel pixelOf(const Key& key) {
        using Channel = decltype(Pixel::red);
        return {0, static_cast<Channel>(key.red), static_cast<Channel>(key.green),
                static_cast<Channel>(key.blue)};
    }

    [[nodiscard]] Vector distances(Vector pixels) const {
        if constexpr (std::is_same_v<Pixel, Pixel8>) {
            const Vector d = Isa::difference8(pixels, color_);
            return Isa::addPairs16(
                Isa::add16(Isa::bitAnd(d, Isa::fill(0x00FF0000)), Isa::highBytes16(d)));
        } else {
            const Vector d = Isa::difference16(pixels, color_);
            const Vector redAndBlue = Isa::highWords32(d);
            const Vector green = Isa::bitAnd(Isa::highHalves64(d), Isa::fill(0xFFFF));
            return Isa::add32(Isa::add32(redAndBlue, Isa::highHalves64(redAndBlue)), green);
        }
    }

    Vector tolerance_;
    Vector color_;
};

template <typename Isa>
class KeyMissesFloat {
    using Vector = typename Isa::Vector;
    using Floats = typename Isa::Floats;

  public:
    using Pixel = PixelFloat;
    using Key = FloatKey;

    explicit KeyMissesFloat(const Key& key)
        : tolerance_(Isa::fillFloat(key.tolerance)),
          color_(Isa::floats(RepeatPixel<Isa>(Pixel{0.0F, key.red, key.green, key.blue}))) {}

    [[nodiscard]] Vector operator()(Vector pixels) const {
        const Floats d = Isa::magnitude(Isa::subtract(Isa::floats(pixels), color_));
        const Floats afterRed = Isa::subtract(tolerance_, Isa::template spread<1>(d));
        const Floats afterGreen = Isa::subtract(afterRed, Isa::template spread<2>(d));
        const Floats rest = Isa::subtract(afterGreen, Isa::template spread<3>(d));
        return Isa::less(rest, Isa::fillFloat(0.0F));
    }

  private:
    Floats tolerance_;
    Floats color_;
};

template <typename Isa, typename Misses, typename Pixel = typename Misses::Pixel>
int MarkPixelsWith(const Pixel* from, Pixel* to, int count, const typename Misses::Key& key,
                   bool matching) {
    const Misses misses(key);
    Pixel alphaOnly{};
    std::memset(&alphaOnly.alpha, 0xFF, sizeof alphaOnly.alpha);
    const auto alpha = RepeatPixel<Isa>(alphaOnly);
    const auto flip = Isa::fill(matching ? -1 : 0);
    constexpr int atOnce = Isa::bytes / int{sizeof(Pixel)};
    int x = 0;
    for (; x + atOnce <= count; x += atOnce) {
        const auto pixels = Isa::load(from + x);
        const auto keyedOut = Isa::bitXor(misses(pixels), flip);
        Isa::store(to + x, Isa::without(pixels, Isa::bitAnd(keyedOut, alpha)));
    }
    return x;
}

template <typename Isa>
constexpr Forms MakeForms(const char* name) {
    return {name,
            FindWindowsWith<Isa>,
            {{ScanRowWith<Isa, EdgePairs8<Isa>>, MarkPixelsWith<Isa, KeyMisses<Isa, Pixel8>>,
              BlendAcross8},
             {ScanRowWith<Isa, EdgePairs16<Isa>>, MarkPixelsWith<Isa, KeyMisses<Isa, Pixel16>>,
              BlendAcross16},
             {ScanRowWith<Isa, EdgePairsFloat<Isa>>, MarkPixelsWith<Isa, KeyMissesFloat<Isa>>,
              nullptr}}};
}

}  // namespace
// NOLINTEND(misc-definitions-in-headers)
