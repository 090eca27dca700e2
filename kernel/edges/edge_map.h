// The edge map: one byte of edge flags a pixel, inside a border of clear bytes.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// The byte of pixel (x, y) describes the 2 x 2 cell whose top-left pixel is (x, y):
///
///     (x, y)   | R |  (x+1, y)      R: these two differ      G: (x, y) and (x+1, y+1) differ
///     ----D----                     D: these two differ      A: (x+1, y) and (x, y+1) differ
///     (x, y+1)        (x+1, y+1)
enum EdgeFlag : std::uint8_t {
    EdgeRight = 1,
    EdgeDown = 2,
    EdgeDiagonal = 4,
    EdgeAntiDiagonal = 8,
};

/// A view of the map's memory: (height + 2) rows of stride(width) bytes. The border answers reads
/// just outside the image with "clear": a whole row above and below, four bytes before each row and
/// at least one after it (reads further right land in the next row's left margin). Rows further
/// above are not there and must not be asked for.
class EdgeMap {
  public:
    static constexpr int leftMargin = 4;  // keeps the first byte of every row 4-byte aligned

    /// Bytes from one row to the next for an image of this width.
    [[nodiscard]] static std::ptrdiff_t stride(int width) {
        return (std::ptrdiff_t{width} + 5 + 3) & ~std::ptrdiff_t{3};
    }

    /// Bytes of the whole map.
    [[nodiscard]] static std::size_t byteCount(int width, int height) {
        return static_cast<std::size_t>(stride(width)) * (static_cast<std::size_t>(height) + 2);
    }

    EdgeMap(std::uint8_t* memory, int width, int height)
        : origin_(memory + stride(width) + leftMargin),
          stride_(stride(width)),
          width_(width),
          height_(height) {
        assert(memory != nullptr && width > 0 && height > 0);
    }

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }
    [[nodiscard]] std::ptrdiff_t stride() const { return stride_; }

    /// The first byte of a row, from -1 (the border above) to height (the border below).
    [[nodiscard]] std::uint8_t* row(int y) const {
        assert(y >= -1 && y <= height_);
        return origin_ + y * stride_;
    }

    /// Behind the last byte of the map.
    [[nodiscard]] const std::uint8_t* end() const { return row(height_) - leftMargin + stride_; }

    /// Clears the row above (-1) or below (height) the image.
    void clearBorderRow(int y) const {
        assert(y == -1 || y == height_);
        std::memset(row(y) - leftMargin, 0, static_cast<std::size_t>(stride_));
    }

    /// Clears the bytes before and after a row of the image.
    void clearMargins(int y) const {
        assert(y >= 0 && y < height_);
        std::memset(row(y) - leftMargin, 0, leftMargin);
        for (std::uint8_t* byte = row(y) + width_; byte < row(y) - leftMargin + stride_; ++byte)
            *byte = 0;
    }

    /// The flags at a position of the image or its border.
    [[nodiscard]] std::uint8_t flags(int x, int y) const {
        assert(x >= -leftMargin && x < stride_ - (y < height_ ? 0 : leftMargin));
        return row(y)[x];
    }

    [[nodiscard]] bool R(int x, int y) const { return (flags(x, y) & EdgeRight) != 0; }
    [[nodiscard]] bool D(int x, int y) const { return (flags(x, y) & EdgeDown) != 0; }
    [[nodiscard]] bool G(int x, int y) const { return (flags(x, y) & EdgeDiagonal) != 0; }
    [[nodiscard]] bool A(int x, int y) const { return (flags(x, y) & EdgeAntiDiagonal) != 0; }

  private:
    std::uint8_t* origin_;
    std::ptrdiff_t stride_;
    int width_;
    int height_;
};

/// The truth of a test of one flag, in formulas that also hold for masks of many pixels.
struct Truth {
    bool value;

    friend constexpr Truth operator&(Truth a, Truth b) { return {a.value && b.value}; }
    friend constexpr Truth operator|(Truth a, Truth b) { return {a.value || b.value}; }
    friend constexpr Truth operator~(Truth a) { return {!a.value}; }
    constexpr explicit operator bool() const { return value; }
};

/// The flags around one pixel, for walks that stay inside the map.
class FlagsAround {
  public:
    FlagsAround(const EdgeMap& map, int x, int y) : at_(map.row(y) + x), stride_(map.stride()) {}

    [[nodiscard]] Truth test(int dx, int dy, EdgeFlag flag) const {
        return {(at_[dy * stride_ + dx] & flag) != 0};
    }

    /// The same around another pixel.
    [[nodiscard]] FlagsAround moved(int dx, int dy) const {
        return {at_ + dy * stride_ + dx, stride_};
    }

  private:
    FlagsAround(const std::uint8_t* at, std::ptrdiff_t stride) : at_(at), stride_(stride) {}

    const std::uint8_t* at_;
    std::ptrdiff_t stride_;
};
