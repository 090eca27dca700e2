// A borrowed image: pixels behind a base pointer and a row pitch.
#pragma once

#include <cassert>
#include <cstddef>
#include <type_traits>

/// Columns to the right and rows down from some pixel.
struct Offset {
    int dx;
    int dy;

    friend constexpr bool operator==(const Offset&, const Offset&) = default;
};
[[nodiscard]] constexpr Offset operator+(Offset a, Offset b) { return {a.dx + b.dx, a.dy + b.dy}; }

/// Pixel is const-qualified for an image that is only read. Pixel (0, 0) is the top left one; rows
/// may be padded, or run upwards in memory (negative pitch).
template <typename Pixel>
class ImageView {
    using Byte = std::conditional_t<std::is_const_v<Pixel>, const std::byte, std::byte>;
    using Memory = std::conditional_t<std::is_const_v<Pixel>, const void, void>;

  public:
    /// `topLeft` is aligned to a channel; the pitch is in bytes, from a row to the one below.
    ImageView(Memory* topLeft, std::ptrdiff_t pitch, int width, int height)
        : base_(static_cast<Byte*>(topLeft)), pitch_(pitch), width_(width), height_(height) {
        assert(base_ != nullptr || isEmpty());
    }

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }
    [[nodiscard]] std::ptrdiff_t pitch() const { return pitch_; }

    [[nodiscard]] bool isEmpty() const { return width_ <= 0 || height_ <= 0; }
    [[nodiscard]] bool contains(int x, int y) const {
        return x >= 0 && x < width_ && y >= 0 && y < height_;
    }

    [[nodiscard]] Pixel* row(int y) const {
        assert(y >= 0 && y < height_);
        return reinterpret_cast<Pixel*>(base_ + y * pitch_);
    }

    [[nodiscard]] Pixel& at(int x, int y) const {
        assert(contains(x, y));
        return row(y)[x];
    }

    /// These columns and rows as an image.
    [[nodiscard]] ImageView part(int left, int top, int columns, int rows) const {
        assert(contains(left, top) && left + columns <= width_ && top + rows <= height_);
        return {&at(left, top), pitch_, columns, rows};
    }

  private:
    Byte* base_;
    std::ptrdiff_t pitch_;
    int width_;
    int height_;
};

/// Asks for the memory at an address to be brought into the cache; the address need not be valid.
inline void Prefetch([[maybe_unused]] const void* address) noexcept {
#ifdef __GNUC__
    __builtin_prefetch(address);
#endif
}
