// Edge detection: compares every pixel with its neighbours and fills the edge map.
#pragma once

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "kernel/edges/edge_map.h"
#include "kernel/pixels/image_view.h"
#include "kernel/pixels/pixel.h"

/// Cells of a row that are tested together; a multiple of the four columns whose diagonals depend
/// on each other.
inline constexpr int cellsAtOnce = 16;

/// The flags of such cells, one bit each, by plane.
struct CellBits {
    std::uint32_t of[edgePlanes];
};

/// Which of `count` cells have their diagonals tested: in a group of four those from the first
/// straight edge on, as seen one cell ahead, and the last cell. Those behind the last whole group
/// all have.
[[nodiscard]] constexpr std::uint32_t TestedDiagonals(std::uint32_t straight, int count) {
    constexpr std::uint32_t everyFourth = 0x11111111;
    const std::uint32_t ungrouped = ~0U << (count & ~3);
    const std::uint32_t first = straight | straight >> 1;
    const std::uint32_t second = first | straight << 1;
    const std::uint32_t third = second | straight << 2;
    return ungrouped | (first & everyFourth) | (second & everyFourth << 1) |
           (third & everyFourth << 2) | everyFourth << 3;
}

/// Writes the flags of cells from column x on, a multiple of 8, into a row of the map.
inline void StoreCells(const CellBits& cells, int x, int count, std::uint8_t* row,
                       std::ptrdiff_t planeBytes) {
    for (const std::uint32_t plane : cells.of) {
        std::memcpy(row + x / 8, &plane, static_cast<std::size_t>(count + 7) / 8);
        row += planeBytes;
    }
}

/// Tests `count` cells of a row one by one.
template <typename Depth, typename Pixel = typename Depth::Pixel>
CellBits TestCells(const Depth& depth, const Pixel* row, const Pixel* below, int count) {
    CellBits cells{};
    const auto test = [&](EdgeFlag flag, int i, const Pixel& p, const Pixel& q) {
        cells.of[flag] |= std::uint32_t{depth.isEdge(p, q)} << i;
    };
    for (int i = 0; i < count; ++i) {
        test(EdgeRight, i, row[i], row[i + 1]);
        test(EdgeDown, i, row[i], below[i]);
    }
    std::uint32_t tested =
        ((1U << count) - 1) & TestedDiagonals(cells.of[EdgeRight] | cells.of[EdgeDown], count);
    for (; tested != 0; tested &= tested - 1) {
        const int i = std::countr_zero(tested);
        test(EdgeDiagonal, i, row[i], below[i + 1]);
        test(EdgeAntiDiagonal, i, row[i + 1], below[i]);
    }
    return cells;
}

/// An edge threshold in the range of a pixel type.
template <typename Pixel>
using ThresholdOf = std::conditional_t<std::is_same_v<Pixel, PixelFloat>, float, std::int32_t>;

/// A form of the scan of a row that has a row below it, of cellsAtOnce cells or more. The threshold
/// is not negative, the row of the map clear.
template <typename Pixel>
using ScanRow = void(const Pixel* row, const Pixel* below, int cells, ThresholdOf<Pixel> threshold,
                     std::uint8_t* flags, std::ptrdiff_t planeBytes);

/// The same for any row, cell by cell.
template <typename Depth, typename Pixel = typename Depth::Pixel>
void ScanCells(const Depth& depth, const Pixel* row, const Pixel* below, int cells,
               std::uint8_t* flags, std::ptrdiff_t planeBytes) {
    for (int x = 0; x < cells; x += cellsAtOnce) {
        const int count = std::min(cells - x, cellsAtOnce);
        StoreCells(TestCells(depth, row + x, below + x, count), x, count, flags, planeBytes);
    }
}

/// Fills the map with the edges of a non-empty image. Every byte of the map's rows is written. In
/// the last row there is EdgeRight only, in the last column EdgeDown. `scanRow` may be null.
template <typename Depth, typename Pixel = typename Depth::Pixel>
void ScanEdges(const Depth& depth, const ImageView<const Pixel>& image, const EdgeMap& map,
               ScanRow<Pixel>* scanRow) {
    assert(!image.isEmpty() && map.width() == image.width() && map.height() == image.height());
    const int lastRow = image.height() - 1;
    const int cells = image.width() - 1;
    if (cells < cellsAtOnce || !(depth.edgeThreshold() >= 0)) scanRow = nullptr;
    map.clearRow(-1);
    for (int y = 0; y < lastRow; ++y) {
        const Pixel* row = image.row(y);
        const Pixel* below = image.row(y + 1);
        map.clearRow(y);
        if (scanRow != nullptr) {
            scanRow(row, below, cells, depth.edgeThreshold(), map.row(y), map.planeBytes());
        } else {
            ScanCells(depth, row, below, cells, map.row(y), map.planeBytes());
        }
        if (depth.isEdge(row[cells], below[cells])) map.set(EdgeDown, cells, y);
    }
    map.clearRow(lastRow);
    const Pixel* row = image.row(lastRow);
    for (int x = 0; x < cells; ++x)
        if (depth.isEdge(row[x], row[x + 1])) map.set(EdgeRight, x, lastRow);
    map.clearRow(image.height());
}
