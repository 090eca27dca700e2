// Blend weights: the two number systems, the bias curve and the ramps.
#pragma once

#include <cstdint>

namespace judge {

/// Both halves map 0 to 0 and 1 to 1; single precision, evaluated as written.
inline float BiasCurve(float t, int bias) {
    const auto b = static_cast<float>(bias);
    if (bias > 0) return (t * t * t * b + (100.0f - b) * t) / 100.0f;
    const float u = 1.0f - t;
    return 1.0f - (u * u * u * -b + (100.0f + b) * u) / 100.0f;
}

/// Weights of the 8-bit and 16-bit kernels: shares of 65535.
struct IntegerWeights {
    using Weight = std::int32_t;
    static constexpr Weight full = 65535, threeQuarters = 49151, half = 32767, third = 21844,
                            sixth = 10922;

    static Weight step(int denominator) { return 3276700 / denominator; }
    static Weight tip(int softness) { return softness * 32767 / 200; }
    static Weight corner(int softness) {
        if (softness >= 70) return 6553;
        return static_cast<Weight>((1.0f - static_cast<float>(70 - softness) / 70.0f) * 6553.0f);
    }
    /// A whole pixel of a ramp that loses `s` per pixel, and the triangle that is left in its last
    /// pixel.
    static Weight wholePixel(Weight r, Weight s) { return r - (s >> 1); }
    static Weight lastPixel(Weight r, Weight s) {
        return static_cast<Weight>(std::int64_t{r} * r / (2 * std::int64_t{s}));
    }
};

/// Weights of the float kernels: shares of 1.
struct FloatWeights {
    using Weight = float;
    static constexpr Weight full = 1.0f, threeQuarters = 0.75f, half = 0.5f, third = 0.33333334f,
                            sixth = 0.16666667f;

    static Weight step(int denominator) { return 50.0f / static_cast<float>(denominator); }
    static Weight tip(int softness) { return static_cast<float>(softness) * 0.5f / 200.0f; }
    static Weight corner(int softness) {
        const float tenth = 0.5f / 5.0f;
        if (softness >= 70) return tenth;
        return (1.0f - static_cast<float>(70 - softness) / 70.0f) * tenth;
    }
    static Weight wholePixel(Weight r, Weight s) { return r + (0.0f - s * 0.5f); }
    static Weight lastPixel(Weight r, Weight s) { return r * r / (2.0f * s); }
};

/// One ramp: starts at `fullWeight`, loses `step` per pixel.
template <typename Weights>
struct Ramp {
    using Weight = typename Weights::Weight;

    Weight fullWeight;
    Weight step;
    int bias;
    Weight remaining = fullWeight;
    bool done = false;

    /// The weight of the next pixel. Sets `done` with the pixel that exhausts the ramp.
    Weight next() {
        const Weight r = remaining;
        remaining = r - step;
        done = !(remaining > 0);
        const Weight w = done ? Weights::lastPixel(r, step) : Weights::wholePixel(r, step);
        if (bias == 0) return w;
        const float t = static_cast<float>(w) / static_cast<float>(fullWeight);
        return static_cast<Weight>(static_cast<float>(fullWeight) * BiasCurve(t, bias));
    }
};

/// The ramp kinds for runs of `n` with length factor `factor`, thin lines of `j` and staircases of
/// `q` pixels.
template <typename Weights>
struct RampKinds {
    int softness;
    int bias;

    Ramp<Weights> run(int n, int factor) const {
        return {Weights::half, Weights::step(AtLeastOne(factor) * (n + 1)), bias};
    }
    Ramp<Weights> thinLine(int j) const {
        return {Weights::full, 2 * Weights::step(AtLeastOne(softness) * (j + 1)), bias / 3};
    }
    Ramp<Weights> staircase(int q) const {
        return {Weights::third, Weights::step(AtLeastOne(softness) * q), bias};
    }
    Ramp<Weights> staircaseRestore(int q) const {
        return {Weights::half, Weights::step(AtLeastOne(softness) * q), bias};
    }

  private:
    static int AtLeastOne(int percent) { return percent > 1 ? percent : 1; }
};

}  // namespace judge
