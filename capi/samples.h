// The kinds of samples that images may have: the depth at which each is smoothed, and the ways to
// that depth's channels and back.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "capi/half.h"
#include "capi/unit_scale.h"
#include "kernel/kernels.h"
#include "kernel/pixels/pixel.h"

/// The depth at which samples are smoothed.
template <typename DepthPixel, PixelDepth pixelDepth, auto fullIntensity>
struct AtDepth {
    using Pixel = DepthPixel;
    using Channel = decltype(Pixel::alpha);
    static constexpr PixelDepth depth = pixelDepth;
    static constexpr Channel full = fullIntensity;

    // On the scale where full intensity is 1, to the nearest.
    [[nodiscard]] static double channelToUnit(Channel channel) {
        return static_cast<double>(channel) / fullIntensity;
    }
    [[nodiscard]] static Channel channelFromUnit(double unit) {
        if constexpr (std::is_integral_v<Channel>) {
            return WholeFromUnit<Channel>(unit, fullIntensity);
        } else {
            return FloatFromUnit<Channel>(unit);
        }
    }
};
using At8 = AtDepth<Pixel8, PixelDepth::bits8, 255>;
using At16 = AtDepth<Pixel16, PixelDepth::bits16, 32768>;
using AtFloat = AtDepth<PixelFloat, PixelDepth::floats, 1>;

/// Samples that are the channels of a depth as they stand.
template <typename Depth>
struct ChannelSamples : Depth {
    using Channel = typename Depth::Channel;
    using Sample = Channel;
    static constexpr bool areChannels = true;

    [[nodiscard]] static Channel toChannel(Sample sample) { return sample; }
    [[nodiscard]] static Sample toSample(Channel channel) { return channel; }
    [[nodiscard]] static double toUnit(Sample sample) { return Depth::channelToUnit(sample); }
    [[nodiscard]] static Sample fromUnit(double unit) { return Depth::channelFromUnit(unit); }
};
using Samples8 = ChannelSamples<At8>;
using Samples32768 = ChannelSamples<At16>;
using SamplesFloat = ChannelSamples<AtFloat>;

/// 0..65535. Both ways give the nearest value, halves rounded up.
struct Samples65535 : At16 {
    using Sample = std::uint16_t;
    static constexpr bool areChannels = false;

    [[nodiscard]] static Channel toChannel(Sample sample) {
        return static_cast<Channel>((sample + 1) >> 1);
    }
    [[nodiscard]] static Sample toSample(Channel channel) {
        return static_cast<Sample>(std::min(2 * channel - (channel > 16384 ? 1 : 0), 65535));
    }
    [[nodiscard]] static double toUnit(Sample sample) { return sample / 65535.0; }
    [[nodiscard]] static Sample fromUnit(double unit) { return WholeFromUnit<Sample>(unit, 65535); }
};

struct SamplesHalf : AtFloat {
    using Sample = std::uint16_t;
    static constexpr bool areChannels = false;

    [[nodiscard]] static Channel toChannel(Sample sample) { return FloatOfHalf(sample); }
    [[nodiscard]] static Sample toSample(Channel channel) { return HalfOfFloat(channel); }
    [[nodiscard]] static double toUnit(Sample sample) { return FloatOfHalf(sample); }
    [[nodiscard]] static Sample fromUnit(double unit) { return toSample(channelFromUnit(unit)); }
};
