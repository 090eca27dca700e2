// The edge map: four planes of one bit a pixel, inside a border of clear bits.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// The flags of pixel (x, y) describe the 2 x 2 cell whose top-left pixel is (x, y). Each has a
/// plane of its own.
///
///     (x, y)   | R |  (x+1, y)      R: these two differ      G: (x, y) and (x+1, y+1) differ
///     ----D----                     D: these two differ      A: (x+1, y) and (x, y+1) differ
///     (x, y+1)        (x+1, y+1)
enum EdgeFlag : std::uint8_t { EdgeRight, EdgeDown, EdgeDiagonal, EdgeAntiDiagonal };
inline constexpr int edgePlanes = 4;

/// A view of the map's memory: the rows of the image from top to bottom, each as its rows of the
/// four planes, of planeBytes(width) bytes. Column x is bit x % 8 of byte x / 8. The border answers
/// reads just outside the image with "clear": a whole row above and below, and between two rows of
/// a plane at least as many columns as `margin` says. Rows further away are not there and must not
/// be asked for.
class EdgeMap {
  public:
    static constexpr int margin = 4;

    /// Bytes of one row of a plane.
    [[nodiscard]] static std::ptrdiff_t planeBytes(int width) {
        return (std::ptrdiff_t{width} + margin + 7) / 8;
    }

    /// Bytes of the whole map.
    [[nodiscard]] static std::size_t byteCount(int width, int height) {
        const std::size_t rows = static_cast<std::size_t>(height) + 2;
        return ends + edgePlanes * static_cast<std::size_t>(planeBytes(width)) * rows + ends;
    }

    EdgeMap(std::uint8_t* memory, int width, int height)
        : origin_(memory + ends + edgePlanes * planeBytes(width)),
          planeBytes_(planeBytes(width)),
          width_(width),
          height_(height) {
        assert(memory != nullptr && width > 0 && height > 0);
    }

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }
    [[nodiscard]] std::ptrdiff_t planeBytes() const { return planeBytes_; }
    [[nodiscard]] std::ptrdiff_t stride() const { return edgePlanes * planeBytes_; }

    /// The first byte of a row, from -1 (the border above) to height (the border below).
    [[nodiscard]] std::uint8_t* row(int y) const {
        assert(y >= -1 && y <= height_);
        return origin_ + y * stride();
    }

    /// The columns from x on of a row of a plane; x is a multiple of 8.
    [[nodiscard]] const std::uint8_t* columns(EdgeFlag flag, int x, int y) const {
        assert(x % 8 == 0);
        return row(y) + flag * planeBytes_ + x / 8;
    }

    /// Behind the last byte of the map.
    [[nodiscard]] const std::uint8_t* end() const { return row(height_) + stride() + ends; }

    void clearRow(int y) const { std::memset(row(y), 0, static_cast<std::size_t>(stride())); }

    /// Sets the flag of a pixel of the image.
    void set(EdgeFlag flag, int x, int y) const {
        assert(x >= 0 && x < width_ && y >= 0 && y < height_);
        std::uint8_t& byte = row(y)[flag * planeBytes_ + x / 8];
        byte = static_cast<std::uint8_t>(byte | 1U << x % 8);
    }

    /// The flag of a pixel of the image or its border.
    [[nodiscard]] bool has(EdgeFlag flag, int x, int y) const {
        assert(x >= -margin && x < width_ + margin);
        return (row(y)[flag * planeBytes_ + (x >> 3)] >> (x & 7) & 1) != 0;
    }

    [[nodiscard]] bool R(int x, int y) const { return has(EdgeRight, x, y); }
    [[nodiscard]] bool D(int x, int y) const { return has(EdgeDown, x, y); }
    [[nodiscard]] bool G(int x, int y) const { return has(EdgeDiagonal, x, y); }
    [[nodiscard]] bool A(int x, int y) const { return has(EdgeAntiDiagonal, x, y); }

  private:
    // Bytes at both ends, so that words may begin and end outside of the rows. They are not
    // cleared: what they hold must not matter.
    static constexpr int ends = 4;

    std::uint8_t* origin_;
    std::ptrdiff_t planeBytes_;
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
    FlagsAround(const EdgeMap& map, int x, int y)
        : row_(map.row(y)), planeBytes_(map.planeBytes()), x_(x) {}

    [[nodiscard]] Truth test(int dx, int dy, EdgeFlag flag) const {
        const int x = x_ + dx;
        const std::ptrdiff_t plane = std::ptrdiff_t{dy} * edgePlanes + flag;
        return {(row_[plane * planeBytes_ + (x >> 3)] >> (x & 7) & 1) != 0};
    }

    /// The same around another pixel.
    [[nodiscard]] FlagsAround moved(int dx, int dy) const {
        return {row_ + std::ptrdiff_t{dy} * edgePlanes * planeBytes_, planeBytes_, x_ + dx};
    }

  private:
    FlagsAround(const std::uint8_t* row, std::ptrdiff_t planeBytes, int x)
        : row_(row), planeBytes_(planeBytes), x_(x) {}

    const std::uint8_t* row_;  // of the first plane
    std::ptrdiff_t planeBytes_;
    int x_;
};
