// Windows: stretches of rows that are decided on at once, with what the patterns find there.
#pragma once

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "kernel/edges/edge_map.h"
#include "kernel/pixels/image_view.h"
#include "kernel/shapes/findings.h"
#include "kernel/shapes/patterns.h"

/// A batch of windows. Window w stands for the pixels of row y[w] from column x[w] on, in bits
/// `margin` to margin + pixels - 1 of the findings' words; the other bits are there for the
/// patterns to look at.
struct Windows {
    static constexpr int columns = 64;
    static constexpr int margin = 8;
    static constexpr int pixels = columns - 2 * margin;

    int count;
    int x[PixelSet::windows];
    int y[PixelSet::windows];
    Findings found;

    /// The column that a bit of a window stands for.
    [[nodiscard]] int column(int window, int bit) const {
        assert(window >= 0 && window < count && bit >= margin && bit < margin + pixels);
        return x[window] - margin + bit;
    }

    /// The bits of a window's own pixels, in an image of this width.
    [[nodiscard]] std::uint64_t own(int window, int width) const {
        const int present = std::min(pixels, width - x[window]);
        return (~std::uint64_t{0} >> (64 - present)) << margin;
    }
};

struct WatchedSearch;

/// What is searched.
struct SearchedMap {
    const EdgeMap& edges;
    WatchedSearch* watch = nullptr;  ///< when it is that search that is asked
};

/// A form of the search: finds the next windows in which there may be something to do, row by row
/// from (x, y) on, and what the patterns find in them. Moves (x, y) on behind them, x being a
/// multiple of 8; y is the map's height when it is done.
using FindWindows = void(const SearchedMap& map, int& x, int& y, Windows& windows);

/// The flags of windows and their surroundings, of those that have been loaded.
// cppcheck-suppress noConstructor
class WindowPlanes {
  public:
    static constexpr int reach = 4;  // rows above and below that the patterns look at

    /// Reads the rows around a window. Rows outside the image are clear.
    void load(int window, const EdgeMap& map, int x, int y) {
        assert(window < PixelSet::windows && x < map.width() && y < map.height());
        const std::ptrdiff_t planeBytes = map.planeBytes();
        for (int dy = -reach; dy <= reach; ++dy) {
            auto& planes = planes_[dy + reach];
            if (y + dy < 0 || y + dy >= map.height()) {
                for (auto& plane : planes) plane[window] = 0;
                continue;
            }
            const std::uint8_t* columns = map.columns(EdgeRight, x, y + dy) - Windows::margin / 8;
            for (int plane = 0; plane < edgePlanes; ++plane, columns += planeBytes)
                std::memcpy(&planes[plane][window], columns, sizeof planes[plane][window]);
        }
    }

    /// The words from `window` on.
    [[nodiscard]] const std::uint64_t* plane(int dy, EdgeFlag flag, int window) const {
        assert(dy >= -reach && dy <= reach);
        return planes_[dy + reach][flag] + window;
    }

  private:
    static_assert(std::endian::native == std::endian::little);

    std::uint64_t planes_[reach + 1 + reach][edgePlanes][PixelSet::windows];
};

/// As many windows as a vector has 64-bit lanes, as flags for the patterns. Vectors names the
/// instructions of one set; see PlainVectors for those that are needed here.
template <typename Vectors>
class WindowFlags {
  public:
    static constexpr int windows = Vectors::bytes / 8;

    struct Mask {
        typename Vectors::Vector bits;

        friend Mask operator&(Mask a, Mask b) { return {Vectors::bitAnd(a.bits, b.bits)}; }
        friend Mask operator|(Mask a, Mask b) { return {Vectors::bitOr(a.bits, b.bits)}; }
        friend Mask operator~(Mask a) { return {Vectors::bitXor(a.bits, Vectors::fill(-1))}; }
    };

    WindowFlags(const WindowPlanes& planes, int window) : planes_(planes), window_(window) {}

    static void store(Mask mask, std::uint64_t* words) { Vectors::store(words, mask.bits); }

    // Bit i of a plane stands for column i, so the flag dx columns on is dx bits up.
    [[nodiscard]] Mask test(int dx, int dy, EdgeFlag flag) const {
        assert(dx >= -EdgeMap::margin && dx <= EdgeMap::margin);
        const auto plane = Vectors::load(planes_.plane(dy, flag, window_));
        return {dx < 0 ? Vectors::shiftLeft64(plane, -dx) : Vectors::shiftRight64(plane, dx)};
    }

  private:
    const WindowPlanes& planes_;
    int window_;
};

/// Asks for memory that a walk along rows will come to. The processor's own prefetching stops at
/// the borders of pages.
template <typename Vectors, int bytes>
void PrefetchFarAhead(const void* at) {
    constexpr int distance = 8192;
    constexpr int line = 64;
    // An address that may lie behind all of the memory, where no pointer may be moved to.
    const auto ahead = reinterpret_cast<std::uintptr_t>(at) + distance;
    for (int i = 0; i < bytes; i += line)
        Vectors::prefetch(reinterpret_cast<const char*>(ahead + static_cast<std::uintptr_t>(i)));
}

/// The vector that begins at `at`, with zeros from `end` on.
template <typename Vectors>
auto LoadPart(const std::uint8_t* at, const std::uint8_t* end) {
    std::uint8_t padded[Vectors::bytes] = {};
    std::memcpy(padded, at, std::min(sizeof padded, static_cast<std::size_t>(end - at)));
    return Vectors::load(padded);
}

/// Where there may be something to do: at a piece near one of the other direction, or at a vertical
/// one that a corner can be blended across. Bit i stands for the eight pixels from x + 8 * i on.
///
/// "Near" is as far as anything that is done at the piece needs one of the other direction: of
/// R(x, y) a D in columns x - 1 to x + 1 and rows y - 2 to y + 1, of D(x, y) an R in columns x - 2
/// to x and rows y - 1 to y + 1. A pattern that needs one only further away would be missed.
template <typename Vectors>
std::uint64_t FindCandidates(const EdgeMap& map, int x, int y) {
    const auto load = [&](EdgeFlag flag, int dy) {
        const std::uint8_t* at = map.columns(flag, x, std::max(y + dy, -1));
        if (map.end() - at >= std::ptrdiff_t{Vectors::bytes}) return Vectors::load(at);
        return LoadPart<Vectors>(at, map.end());
    };
    const auto either = [](auto a, auto b) { return Vectors::bitOr(a, b); };
    const auto both = [](auto a, auto b) { return Vectors::bitAnd(a, b); };
    const auto right = load(EdgeRight, 0);
    const auto down = load(EdgeDown, 0);
    if (Vectors::isZero(either(right, down))) return 0;
    const auto downNear =
        either(either(load(EdgeDown, -2), load(EdgeDown, -1)), either(down, load(EdgeDown, 1)));
    const auto rightNear = either(either(load(EdgeRight, -1), right), load(EdgeRight, 1));
    const auto diagonals = both(either(load(EdgeDiagonal, -1), load(EdgeDiagonal, 0)),
                                either(load(EdgeAntiDiagonal, -1), load(EdgeAntiDiagonal, 0)));
    // Columns that are moved in from another word may be anything.
    const auto ends = Vectors::fill64(0x8000'0000'0000'0003);
    const auto wide = [&](auto plane) {
        return either(either(plane, ends), Vectors::shiftLeft64(plane, 1));
    };
    const auto besideRight = either(wide(downNear), Vectors::shiftRight64(downNear, 1));
    const auto besideDown = either(wide(rightNear), Vectors::shiftLeft64(rightNear, 2));
    const auto straight = Vectors::bitXor(diagonals, Vectors::fill(-1));
    return Vectors::nonZeroBytes(
        either(both(right, either(besideRight, straight)), both(down, besideDown)));
}

/// The search, written once for every instruction set.
template <typename Vectors>
void FindWindowsWith(const SearchedMap& searched, int& x, int& y, Windows& windows) {
    const EdgeMap& map = searched.edges;
    WindowPlanes planes;
    windows.count = 0;
    while (y < map.height() && windows.count < PixelSet::windows) {
        const int first = x;
        std::uint64_t candidates = FindCandidates<Vectors>(map, x, y);
        x += 8 * Vectors::bytes;
        while (candidates != 0) {
            const int column = first + 8 * std::countr_zero(candidates);
            if (column >= map.width()) break;
            if (windows.count == PixelSet::windows) {
                x = column;
                break;
            }
            windows.x[windows.count] = column;
            windows.y[windows.count] = y;
            planes.load(windows.count++, map, column, y);
            const int behind = column + Windows::pixels;
            x = std::max(x, behind);
            candidates &= behind < x ? ~std::uint64_t{0} << (behind - first) / 8 : 0;
        }
        if (x < map.width()) continue;
        x = 0;
        ++y;
    }
    for (int window = 0; window < windows.count; window += WindowFlags<Vectors>::windows)
        PatternFinder(WindowFlags<Vectors>(planes, window)).find(windows.found, window);
}

/// Eight bytes at a time, without vector instructions: what every processor has.
struct PlainVectors {
    using Vector = std::uint64_t;
    static constexpr int bytes = 8;

    static Vector load(const void* p) {
        Vector v = 0;
        std::memcpy(&v, p, sizeof v);
        return v;
    }
    static void store(void* p, Vector v) { std::memcpy(p, &v, sizeof v); }
    static void prefetch(const void* p) { Prefetch(p); }
    static Vector zero() { return 0; }
    static Vector fill(std::int32_t v) {
        return std::uint64_t{static_cast<std::uint32_t>(v)} * 0x1'0000'0001;
    }
    static Vector fill64(std::uint64_t v) { return v; }
    static bool isZero(Vector v) { return v == 0; }
    static Vector bitAnd(Vector a, Vector b) { return a & b; }
    static Vector bitOr(Vector a, Vector b) { return a | b; }
    static Vector bitXor(Vector a, Vector b) { return a ^ b; }
    static Vector shiftLeft64(Vector v, int count) { return v << count; }
    static Vector shiftRight64(Vector v, int count) { return v >> count; }

    /// Bit i is set where byte i is not zero. The product moves the lowest bit of byte i to bit 56
    /// + i.
    static std::uint64_t nonZeroBytes(Vector v) {
        constexpr Vector low = 0x7F7F'7F7F'7F7F'7F7F;
        return ((((v & low) + low) | v) >> 7 & 0x0101'0101'0101'0101) * 0x0102'0408'1020'4080 >> 56;
    }
};
