// The colour key: turns the pixels of one colour, or of every other colour, transparent.
#pragma once

#include <cassert>

#include "kernel/identical.h"
#include "kernel/image_view.h"

enum class KeyMode { NoKey, Key, KeyInvert };

/// Applies the key in one mode. With NoKey every pixel passes unchanged and nothing is kept.
template <typename Depth, KeyMode mode>
class ColorKey {
    using Pixel = typename Depth::Pixel;

  public:
    explicit ColorKey(const EffectValues& values) : key_(values) {}

    /// Looks at the colour channels only; a pixel's own alpha neither makes it match nor prevents it.
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

/// Copies the input to the output with every keyed-out pixel made transparent. Cels are flat: a verdict is
/// kept along a row for as long as the pixels stay the same.
template <typename Key, typename Pixel>
void MarkingCopy(const Key& key, const ImageView<const Pixel>& input,
                 const ImageView<Pixel>& output) noexcept {
    assert(input.width() == output.width() && input.height() == output.height());
    for (int y = 0; y < input.height(); ++y) {
        const Pixel* from = input.row(y);
        Pixel* to = output.row(y);
        bool keyedOut = false;
        for (int x = 0; x < input.width(); ++x) {
            const bool repeats = x > 0 && Identical(from[x], from[x - 1]);
            if (!repeats) keyedOut = key.isKeyedOut(from[x]);
            to[x] = from[x];
            if (keyedOut) to[x].alpha = 0;
        }
    }
}
