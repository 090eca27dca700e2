// Edge detection: compares every pixel with its neighbours and fills the edge map.
#pragma once

#include <cassert>
#include <cstdint>
#include <type_traits>

#include "kernel/edges/edge_map.h"
#include "kernel/pixels/image_view.h"
#include "kernel/pixels/pixel.h"

/// The four flags of the cell at (x, y), tested against the depth's edge threshold.
template <typename Depth>
class CellTests {
    using Pixel = typename Depth::Pixel;

  public:
    CellTests(const Depth& depth, const Pixel* row, const Pixel* below)
        : depth_(depth), row_(row), below_(below) {}

    /// EdgeRight and EdgeDown.
    [[nodiscard]] unsigned straight(int x) const {
        return flag(EdgeRight, row_[x], row_[x + 1]) | flag(EdgeDown, row_[x], below_[x]);
    }

    /// EdgeDiagonal and EdgeAntiDiagonal.
    [[nodiscard]] unsigned diagonal(int x) const {
        return flag(EdgeDiagonal, row_[x], below_[x + 1]) |
               flag(EdgeAntiDiagonal, row_[x + 1], below_[x]);
    }

  private:
    [[nodiscard]] unsigned flag(unsigned bit, const Pixel& p, const Pixel& q) const {
        return depth_.isEdge(p, q) ? bit : 0U;
    }

    const Depth& depth_;
    const Pixel* row_;
    const Pixel* below_;
};

/// Scans the cells of one row that has a row below it. Columns go in groups of four, in which a
/// column's diagonals are tested only once a straight edge has been found no further right than the
/// column after it; the last column of a group and the columns past the last whole group always
/// have theirs tested.
template <typename Depth>
void ScanCells(const CellTests<Depth>& cell, std::uint8_t* flags, int width) {
    const int grouped = (width - 1) & ~3;
    for (int x = 0; x < grouped; x += 4) {
        unsigned found = cell.straight(x);
        unsigned ahead[4] = {found, 0, 0, 0};
        for (int k = 0; k < 3; ++k) {
            ahead[k + 1] = cell.straight(x + k + 1);
            found |= ahead[k + 1];
            if (found != 0) ahead[k] |= cell.diagonal(x + k);
        }
        ahead[3] |= cell.diagonal(x + 3);
        for (int k = 0; k < 4; ++k) flags[x + k] = static_cast<std::uint8_t>(ahead[k]);
    }
    for (int x = grouped; x < width - 1; ++x) {
        flags[x] = static_cast<std::uint8_t>(cell.straight(x) | cell.diagonal(x));
    }
}

/// An edge threshold in the range of a pixel type.
template <typename Pixel>
using ThresholdOf = std::conditional_t<std::is_same_v<Pixel, PixelFloat>, float, std::int32_t>;

/// A form of the scan of one row: the cells (0, y) to (width - 2, y), width >= smallestScan. The
/// threshold is not negative. May also clear up to 31 bytes behind them.
template <typename Pixel>
using ScanRow = void(const Pixel* row, const Pixel* below, int width, ThresholdOf<Pixel> threshold,
                     std::uint8_t* flags);
inline constexpr int smallestScan = 33;

/// The flags of the last row, which has no row below: EdgeRight only.
template <typename Depth>
void ScanLastRow(const Depth& depth, const typename Depth::Pixel* row, std::uint8_t* flags,
                 int width) {
    for (int x = 0; x < width - 1; ++x) flags[x] = depth.isEdge(row[x], row[x + 1]) ? EdgeRight : 0;
    flags[width - 1] = 0;
}

/// Fills the map with the edges of a non-empty image. Every byte of the map's memory is written,
/// once. The last column gets only EdgeDown flags. `scanRow` may be null.
template <typename Depth, typename Pixel = typename Depth::Pixel>
void ScanEdges(const Depth& depth, const ImageView<const Pixel>& image, const EdgeMap& map,
               ScanRow<Pixel>* scanRow) {
    assert(!image.isEmpty() && map.width() == image.width() && map.height() == image.height());
    const int lastRow = image.height() - 1;
    const int lastColumn = image.width() - 1;
    if (image.width() < smallestScan || !(depth.edgeThreshold() >= 0)) scanRow = nullptr;
    map.clearBorderRow(-1);
    for (int y = 0; y < lastRow; ++y) {
        const Pixel* row = image.row(y);
        const Pixel* below = image.row(y + 1);
        if (scanRow != nullptr) {
            scanRow(row, below, image.width(), depth.edgeThreshold(), map.row(y));
        } else {
            ScanCells(CellTests<Depth>(depth, row, below), map.row(y), image.width());
        }
        map.row(y)[lastColumn] = depth.isEdge(row[lastColumn], below[lastColumn]) ? EdgeDown : 0;
        map.clearMargins(y);
    }
    ScanLastRow(depth, image.row(lastRow), map.row(lastRow), image.width());
    map.clearMargins(lastRow);
    map.clearBorderRow(image.height());
}
