// Windows: stretches of rows that are decided on at once, with what the patterns find there.
#pragma once

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
    static constexpr int margin = EdgeMap::leftMargin;
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
};

struct WatchedSearch;

/// The memory of an edge map.
struct MapMemory {
    const std::uint8_t* flags;  ///< of row 0, column -Windows::margin
    std::ptrdiff_t stride;      ///< bytes from row to row
    const std::uint8_t* end;    ///< behind the last byte of the map
    int width;
    int height;
    WatchedSearch* watch = nullptr;  ///< when it is that search that is asked
};

/// A form of the search: finds the next windows with straight edges, row by row from (x, y) on, and
/// what the patterns find in them. Moves (x, y) on behind them; y is the map's height when it is
/// done.
using FindWindows = void(const MapMemory& map, int& x, int& y, Windows& windows);

/// The flags of windows and their surroundings as bit planes. Vectors names the instructions of one
/// set; see PlainVectors for those that are needed here.
template <typename Vectors>
class WindowPlanes {
  public:
    static constexpr int reach = 4;  // rows above and below that the patterns look at

    /// Reads the rows around a window. Rows outside the image are clear.
    void load(int window, const MapMemory& map, int x, int y) {
        assert(window < PixelSet::windows && x < map.width && y < map.height);
        for (int dy = -reach; dy <= reach; ++dy) {
            Planes& planes = planes_[dy + reach];
            if (y + dy < 0 || y + dy >= map.height) {
                for (auto& plane : planes) plane[window] = 0;
                continue;
            }
            const std::uint8_t* flags = map.flags + (y + dy) * map.stride + x;
            if (map.end - flags >= Windows::columns) {
                split(flags, planes, window);
            } else {
                std::uint8_t padded[Windows::columns] = {};
                std::memcpy(padded, flags, static_cast<std::size_t>(map.end - flags));
                split(padded, planes, window);
            }
        }
    }

    /// The words from `window` on.
    [[nodiscard]] const std::uint64_t* plane(int dy, int flag, int window) const {
        assert(dy >= -reach && dy <= reach);
        return planes_[dy + reach][flag] + window;
    }

  private:
    using Planes = std::uint64_t[4][PixelSet::windows];

    static void split(const std::uint8_t* flags, Planes& planes, int window) {
        std::uint64_t plane[4] = {};
        for (int i = 0; i < Windows::columns; i += Vectors::bytes) {
            const auto part = Vectors::load(flags + i);
            plane[0] |= Vectors::template bitsOf<0>(part) << i;
            plane[1] |= Vectors::template bitsOf<1>(part) << i;
            plane[2] |= Vectors::template bitsOf<2>(part) << i;
            plane[3] |= Vectors::template bitsOf<3>(part) << i;
        }
        for (int flag = 0; flag < 4; ++flag) planes[flag][window] = plane[flag];
    }

    Planes planes_[reach + 1 + reach];
};

/// As many windows as a vector has 64-bit lanes, as flags for the patterns.
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

    WindowFlags(const WindowPlanes<Vectors>& planes, int window)
        : planes_(planes), window_(window) {}

    static void store(Mask mask, std::uint64_t* words) { Vectors::store(words, mask.bits); }

    // Bit i of a plane stands for column i, so the flag dx columns on is dx bits up.
    [[nodiscard]] Mask test(int dx, int dy, EdgeFlag flag) const {
        assert(dx >= -Windows::margin && dx <= Windows::margin);
        const int index = flag == EdgeRight      ? 0
                          : flag == EdgeDown     ? 1
                          : flag == EdgeDiagonal ? 2
                                                 : 3;
        const auto plane = Vectors::load(planes_.plane(dy, index, window_));
        return {dx < 0 ? Vectors::shiftLeft64(plane, -dx) : Vectors::shiftRight64(plane, dx)};
    }

  private:
    const WindowPlanes<Vectors>& planes_;
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

template <typename Vectors>
bool HasStraightEdges(const std::uint8_t* flags) {
    auto all = Vectors::zero();
    for (int i = 0; i < Windows::columns; i += Vectors::bytes)
        all = Vectors::bitOr(all, Vectors::load(flags + i));
    return !Vectors::isZero(Vectors::bitAnd(all, Vectors::fill(0x03030303)));
}

/// The search, written once for every instruction set.
template <typename Vectors>
void FindWindowsWith(const MapMemory& map, int& x, int& y, Windows& windows) {
    assert(x >= 0 && y >= 0 && x % Windows::pixels == 0);
    WindowPlanes<Vectors> planes;
    int count = 0;
    for (; y < map.height && count < PixelSet::windows; x = 0, ++y) {
        const std::uint8_t* row = map.flags + y * map.stride;
        for (; x < map.width && count < PixelSet::windows; x += Windows::pixels) {
            const std::uint8_t* flags = row + x;
            PrefetchFarAhead<Vectors, Windows::pixels>(flags);
            if (map.end - flags >= Windows::columns && !HasStraightEdges<Vectors>(flags)) continue;
            windows.x[count] = x;
            windows.y[count] = y;
            planes.load(count++, map, x, y);
        }
        if (x < map.width) break;
    }
    windows.count = count;
    for (int window = 0; window < count; window += WindowFlags<Vectors>::windows)
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
    static bool isZero(Vector v) { return v == 0; }
    static Vector bitAnd(Vector a, Vector b) { return a & b; }
    static Vector bitOr(Vector a, Vector b) { return a | b; }
    static Vector bitXor(Vector a, Vector b) { return a ^ b; }
    static Vector shiftLeft64(Vector v, int count) { return v << count; }
    static Vector shiftRight64(Vector v, int count) { return v >> count; }

    /// Bit `flag` of each byte, the first byte's lowest. The product moves the bit of byte i to bit
    /// 56 + i.
    template <int flag>
    static std::uint64_t bitsOf(Vector v) {
        static_assert(std::endian::native == std::endian::little);
        return (v >> flag & 0x0101'0101'0101'0101) * 0x0102'0408'1020'4080 >> 56;
    }
};
