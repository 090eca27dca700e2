// The stages in vector instructions, written once for every set of instructions.h. Internal linkage
// throughout, see there.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <type_traits>

#include "kernel/pass/windows.h"
#include "kernel/x64/instructions.h"
#include "kernel/x64/x64_forms.h"

// NOLINTBEGIN(misc-definitions-in-headers): each file that includes this has its own
namespace {

/// Which pairs of pixels form an edge, one bit each, for as many pixels as a vector has 32-bit
/// lanes: the depths' own tests, of pixels made ready for them by load.
template <typename Isa>
struct EdgePairs8 {
    using Pixel = ::Pixel8;
    using Vector = typename Isa::Vector;

    explicit EdgePairs8(std::int32_t threshold) : threshold_(Isa::fill(threshold)) {}

    using Pixels = Vector;
    // A transparent pixel counts as all zero; alpha is a pixel's lowest byte.
    static Pixels load(const Pixel* p) {
        const Vector v = Isa::load(p);
        return Isa::without(v, Isa::equal32(Isa::bitAnd(v, Isa::fill(0xFF)), Isa::zero()));
    }

    [[nodiscard]] std::uint32_t operator()(const Pixels& p, const Pixels& q) const {
        const Vector d = Isa::difference8(p, q);
        const Vector pairs = Isa::add16(Isa::bitAnd(d, Isa::fill(0x00FF00FF)), Isa::highBytes16(d));
        return Isa::signs(Isa::greater32(Isa::addPairs16(pairs), threshold_));
    }

  private:
    Vector threshold_;
};

template <typename Isa>
struct EdgePairs16 {
    using Pixel = ::Pixel16;
    using Vector = typename Isa::Vector;

    explicit EdgePairs16(std::int32_t threshold) : threshold_(Isa::fill(threshold)) {}

    struct Pixels {
        Vector low;
        Vector high;
    };
    static Pixels load(const Pixel* p) {
        return {visible(Isa::load(p)), visible(Isa::load(p + Isa::bytes / 8))};
    }

    [[nodiscard]] std::uint32_t operator()(const Pixels& p, const Pixels& q) const {
        const Vector sums = Isa::lowHalves(distances(p.low, q.low), distances(p.high, q.high));
        return Isa::signs(Isa::greater32(sums, threshold_));
    }

  private:
    // The distances of a vector of pixels, each in the low half of 64 bits.
    static Vector distances(Vector p, Vector q) {
        const Vector d = Isa::difference16(p, q);
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

    /// By channel.
    struct Pixels {
        Floats channel[4];
    };
    static Pixels load(const Pixel* p) {
        Pixels pixels;
        Isa::loadChannels(&p->alpha, pixels.channel);
        return pixels;
    }

    // What is left of the threshold is never below zero for identical pixels, so they need no test
    // of their own.
    [[nodiscard]] std::uint32_t operator()(const Pixels& p, const Pixels& q) const {
        const Floats* a = p.channel;
        const Floats* b = q.channel;
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
    if constexpr (sizeof pixel == 4) {
        return Isa::fill(std::bit_cast<std::int32_t>(pixel));
    } else if constexpr (sizeof pixel == 8) {
        return Isa::fill64(std::bit_cast<std::uint64_t>(pixel));
    } else {
        return Isa::fill128(&pixel);
    }
}

/// Whether any pixels differ at all in the cells at row[0], row[1], ... that are tested at once.
template <typename Isa, typename Pixel>
bool AnyDiffer(const Pixel* row, const Pixel* below) {
    const auto* upper = reinterpret_cast<const char*>(row);
    const auto* lower = reinterpret_cast<const char*>(below);
    typename Isa::Vector differences = Isa::zero();
    for (int i = 0; i < cellsAtOnce * int{sizeof(Pixel)}; i += Isa::bytes) {
        const auto here = Isa::load(upper + i);
        const auto right = Isa::load(upper + i + sizeof(Pixel));
        const auto down = Isa::load(lower + i);
        differences =
            Isa::bitOr(differences, Isa::bitOr(Isa::bitXor(here, right), Isa::bitXor(here, down)));
    }
    // The last cell's lower right pixel is in neither comparison.
    const int lastIsSame = Identical(row[cellsAtOnce], below[cellsAtOnce]);
    return (int{Isa::isZero(differences)} & lastIsSame) == 0;
}

/// The flags of the cells at row[0], row[1], ... that are tested at once.
template <typename Isa, typename Pairs, typename Pixel>
CellBits TestCellsWith(const Pairs& pairs, const Pixel* row, const Pixel* below) {
    CellBits cells{};
    constexpr int lanes = Isa::bytes / 4;
    for (int i = 0; i < cellsAtOnce; i += lanes) {
        const auto here = Pairs::load(row + i);
        const auto right = Pairs::load(row + i + 1);
        const auto down = Pairs::load(below + i);
        const auto across = Pairs::load(below + i + 1);
        cells.of[EdgeRight] |= pairs(here, right) << i;
        cells.of[EdgeDown] |= pairs(here, down) << i;
        cells.of[EdgeDiagonal] |= pairs(here, across) << i;
        cells.of[EdgeAntiDiagonal] |= pairs(right, down) << i;
    }
    return cells;
}

CellBits KeepTestedDiagonals(CellBits cells, int count) {
    const std::uint32_t tested = TestedDiagonals(cells.of[EdgeRight] | cells.of[EdgeDown], count);
    cells.of[EdgeDiagonal] &= tested;
    cells.of[EdgeAntiDiagonal] &= tested;
    return cells;
}

/// First finds where any pixels differ, without a branch: no processor foresees it.
template <typename Isa, typename Pairs, typename Pixel = typename Pairs::Pixel>
void ScanRowWith(const Pixel* row, const Pixel* below, int cells, ThresholdOf<Pixel> threshold,
                 std::uint8_t* flags, std::ptrdiff_t planeBytes) {
    const Pairs pairs(threshold);
    constexpr int most = 64;
    int x = 0;
    while (x + cellsAtOnce <= cells) {
        const int first = x;
        std::uint64_t differing = 0;
        for (int i = 0; i < most && x + cellsAtOnce <= cells; ++i, x += cellsAtOnce) {
            PrefetchFarAhead<Isa, cellsAtOnce* int{sizeof(Pixel)}>(below + x);
            differing |= std::uint64_t{AnyDiffer<Isa>(row + x, below + x)} << i;
        }
        for (; differing != 0; differing &= differing - 1) {
            const int at = first + cellsAtOnce * std::countr_zero(differing);
            StoreCells(
                KeepTestedDiagonals(TestCellsWith<Isa>(pairs, row + at, below + at), cellsAtOnce),
                at, cellsAtOnce, flags, planeBytes);
        }
    }
    if (x == cells) return;
    // The rest are scanned as the end of as many cells, so that no pixel behind the row is read.
    const int shift = x + cellsAtOnce - cells;
    CellBits rest = TestCellsWith<Isa>(pairs, row + x - shift, below + x - shift);
    for (std::uint32_t& plane : rest.of) plane >>= shift;
    StoreCells(KeepTestedDiagonals(rest, cells - x), x, cells - x, flags, planeBytes);
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
    static_assert(sizeof(Key) == sizeof(Pixel));

    explicit KeyMissesFloat(const Key& key)
        : tolerance_(Isa::fillFloat(key.tolerance)), color_(Isa::floats(Isa::fill128(&key))) {}

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
    static constexpr auto alphaOnly = [] {
        std::array<std::uint8_t, sizeof(Pixel)> bytes{};
        std::fill_n(bytes.begin(), sizeof(Pixel::alpha), std::uint8_t{0xFF});
        return std::bit_cast<Pixel>(bytes);
    }();
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

/// Search is the set for the search, whose vectors are put together from single words.
template <typename Isa, typename Search = Isa>
constexpr Forms MakeForms(const char* name) {
    return {name,
            FindWindowsWith<Search>,
            {{ScanRowWith<Isa, EdgePairs8<Isa>>, MarkPixelsWith<Isa, KeyMisses<Isa, Pixel8>>,
              BlendAcross8},
             {ScanRowWith<Isa, EdgePairs16<Isa>>, MarkPixelsWith<Isa, KeyMisses<Isa, Pixel16>>,
              BlendAcross16},
             {ScanRowWith<Isa, EdgePairsFloat<Isa>>, MarkPixelsWith<Isa, KeyMissesFloat<Isa>>,
              nullptr}}};
}

}  // namespace
// NOLINTEND(misc-definitions-in-headers)
