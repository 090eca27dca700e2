// The colour key: turns the pixels of one colour, or of every other colour, transparent.
#pragma once

#include <cassert>

#include "kernel/image_view.h"
#include "kernel/vector_forms.h"

enum class KeyMode { NoKey, Key, KeyInvert };

/// Applies the key in one mode. With NoKey every pixel passes unchanged and nothing is kept.
template <typename Depth, KeyMode mode>
class ColorKey {
    using Pixel = typename Depth::Pixel;

  public:
    explicit ColorKey(const EffectValues& values) : key_(values) {}

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

    /// Copies pixels with every keyed-out one made transparent.
    void mark(const Pixel* from, Pixel* to, int count, const VectorForms* forms) const noexcept {
        int x = 0;
        if (forms != nullptr)
            x = (forms->*Depth::markPixels)(from, to, count, key_.color(), mode == KeyMode::Key);
        for (; x < count; ++x) to[x] = applyKey(from[x]);
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

/// Copies the input to the output with every keyed-out pixel made transparent.
template <typename Key, typename Pixel>
void MarkingCopy(const Key& key, const ImageView<const Pixel>& input,
                 const ImageView<Pixel>& output, const VectorForms* forms) noexcept {
    assert(input.width() == output.width() && input.height() == output.height());
    for (int y = 0; y < input.height(); ++y)
        key.mark(input.row(y), output.row(y), input.width(), forms);
}
