// A borrowed image: pixels behind a base pointer and a row pitch.
#pragma once

#include <cassert>
#include <cstddef>
#include <type_traits>

#include "sdk/effect_api.h"

/// Pixel is const-qualified for an image that is only read. Rows may be padded, or run upwards
/// (negative pitch).
template <typename Pixel>
class ImageView {
    using Byte = std::conditional_t<std::is_const_v<Pixel>, const std::byte, std::byte>;

  public:
    explicit ImageView(const PF_EffectWorld& world)
        : base_(static_cast<Byte*>(world.data)),
          pitch_(world.rowbytes),
          width_(world.width),
          height_(world.height) {
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

  private:
    Byte* base_;
    std::ptrdiff_t pitch_;
    int width_;
    int height_;
};
