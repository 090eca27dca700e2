// The kinds of samples that images may have: the depth at which each is smoothed, and the ways to
// that depth's channels and back.
#pragma once

#include <algorithm>
#include <cstdint>

#include "capi/half.h"
#include "kernel/kernels.h"
#include "kernel/pixels/pixel.h"

/// Samples that are the channels of a depth as they stand.
template <typename DepthPixel, PixelDepth pixelDepth, auto fullIntensity>
struct ChannelSamples {
    using Pixel = DepthPixel;
    using Channel = decltype(Pixel::alpha);
    using Sample = Channel;
    static constexpr PixelDepth depth = pixelDepth;
    static constexpr bool areChannels = true;
    static constexpr Channel full = fullIntensity;

    [[nodiscard]] static Channel toChannel(Sample sample) { return sample; }
    [[nodiscard]] static Sample toSample(Channel channel) { return channel; }
};
using Samples8 = ChannelSamples<Pixel8, PixelDepth::bits8, 255>;
using Samples32768 = ChannelSamples<Pixel16, PixelDepth::bits16, 32768>;
using SamplesFloat = ChannelSamples<PixelFloat, PixelDepth::floats, 1>;

/// 0..65535. Both ways give the nearest value, halves rounded up.
struct Samples65535 : Samples32768 {
    static constexpr bool areChannels = false;

    [[nodiscard]] static Channel toChannel(Sample sample) {
        return static_cast<Channel>((sample + 1) >> 1);
    }
    [[nodiscard]] static Sample toSample(Channel channel) {
        return static_cast<Sample>(std::min(2 * channel - (channel > 16384 ? 1 : 0), 65535));
    }
};

struct SamplesHalf : SamplesFloat {
    using Sample = std::uint16_t;
    static constexpr bool areChannels = false;

    [[nodiscard]] static Channel toChannel(Sample sample) { return FloatOfHalf(sample); }
    [[nodiscard]] static Sample toSample(Channel channel) { return HalfOfFloat(channel); }
};
