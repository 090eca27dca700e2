// The colour key: turns the pixels of one colour, or of every other colour, transparent.
#pragma once

#include <cassert>
#include <cstdint>
#include <type_traits>

#include "kernel/effect_values.h"
#include "kernel/pixels/image_view.h"
#include "kernel/pixels/pixel.h"

/// A key colour and its tolerance in a depth's own range.
template <typename Channel>
struct KeyColor {
    Channel tolerance;  ///< first, so that the colour lies as in a pixel of such channels
    Channel red;
    Channel green;
    Channel blue;
};
using IntegerKey = KeyColor<std::int32_t>;  ///< of the 8-bit and 16-bit depths
using FloatKey = KeyColor<float>;

/// The key color of a pixel type.
template <typename Pixel>
using KeyOf = std::conditional_t<std::is_same_v<Pixel, PixelFloat>, FloatKey, IntegerKey>;

enum class KeyMode { NoKey, Key, KeyInvert };

/// The mode that the values choose.
[[nodiscard]] constexpr KeyMode KeyModeOf(const EffectValues& values) {
    if (values.colorKeyEnable == 0) return KeyMode::NoKey;
    return values.keyInvert == 0 ? KeyMode::Key : KeyMode::KeyInvert;
}

/// Applies the key in one mode. With NoKey every pixel passes unchanged and nothing is kept.
template <typename Depth, KeyMode mode>
class ColorKey {
    using Pixel = typename Depth::Pixel;

  public:
    explicit ColorKey(const EffectValues& values) : key_(values) {}

    /// In the depth's own range.
    [[nodiscard]] const auto& color() const { return key_.color(); }

    /// Looks at the colour channels only; a pixel's own alpha neither makes it match nor prevents
    /// it.
    [[nodiscard]] bool isKeyedOut(const Pixel& p) const noexcept {
        return key_.matches(p) == (mode == KeyMode::Key);
    }

    /// The pixel with its alpha replaced by 0 when it is keyed out.
    [[nodiscard]] Pixel applyKey(Pixel p) const noexcept {
        if (isKeyedOut(p)) p.alpha = 0;
        return p;
    }

  private:
    typename Depth::Key key_;
};

template <typename Depth>
class ColorKey<Depth, KeyMode::NoKey> {
    using Pixel = typename Depth::Pixel;

  public:
    explicit ColorKey(const EffectValues&) {}
    [[nodiscard]] const Pixel& applyKey(const Pixel& p) const noexcept { return p; }
};

/// A form of the marking copy for a stretch of pixels: copies them, with alpha made 0 of those that
/// match the key colour, or of those that do not. May leave out the last few; returns how many it
/// has copied.
template <typename Pixel>
using MarkPixels = int(const Pixel* from, Pixel* to, int count, const KeyOf<Pixel>& key,
                       bool matching);

/// Copies the input to the output with every keyed-out pixel made transparent; `markPixels` may be
/// null.
template <typename Depth, KeyMode mode, typename Pixel = typename Depth::Pixel>
void MarkingCopy(const ColorKey<Depth, mode>& key, const ImageView<const Pixel>& input,
                 const ImageView<Pixel>& output, MarkPixels<Pixel>* markPixels) noexcept {
    assert(input.width() == output.width() && input.height() == output.height());
    for (int y = 0; y < input.height(); ++y) {
        const Pixel* from = input.row(y);
        Pixel* to = output.row(y);
        int x = 0;
        if (markPixels != nullptr)
            x = markPixels(from, to, input.width(), key.color(), mode == KeyMode::Key);
        for (; x < input.width(); ++x) to[x] = key.applyKey(from[x]);
    }
}
