#include "capi/layouts.h"

#include <algorithm>
#include <bit>
#include <type_traits>

#include "capi/samples.h"

namespace {

/// The places of the channels in a pixel, and whether colour is multiplied by alpha.
template <int redPlace, int greenPlace, int bluePlace, int alphaPlace = -1, bool multiplied = false>
struct Order {
    static constexpr int red = redPlace;
    static constexpr int green = greenPlace;
    static constexpr int blue = bluePlace;
    static constexpr int alpha = alphaPlace;
    static constexpr bool hasAlpha = alpha >= 0;
    static constexpr int channels = hasAlpha ? 4 : 3;
    static constexpr bool isMultiplied = multiplied;
};
using Rgba = Order<0, 1, 2, 3>;
using Argb = Order<1, 2, 3, 0>;
using Bgra = Order<2, 1, 0, 3>;
using Rgb = Order<0, 1, 2>;
using MultipliedRgba = Order<0, 1, 2, 3, true>;

template <typename Channel>
bool SameBits(Channel a, Channel b) {
    if constexpr (std::is_same_v<Channel, float>) {
        return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
    } else {
        return a == b;
    }
}

template <typename Samples, typename Order>
void Load(const std::byte* row, std::byte* coreRow, int width) {
    const auto* from = reinterpret_cast<const typename Samples::Sample*>(row);
    auto* to = reinterpret_cast<typename Samples::Pixel*>(coreRow);
    for (int x = 0; x < width; ++x, from += Order::channels) {
        to[x].red = Samples::toChannel(from[Order::red]);
        to[x].green = Samples::toChannel(from[Order::green]);
        to[x].blue = Samples::toChannel(from[Order::blue]);
        if constexpr (Order::hasAlpha) {
            to[x].alpha = Samples::toChannel(from[Order::alpha]);
        } else {
            to[x].alpha = Samples::full;
        }
        if constexpr (Order::isMultiplied) {
            const double alpha = Samples::toUnit(from[Order::alpha]);
            if (alpha == 0 || alpha == 1) continue;  // most pixels: straight as they stand
            const auto straight = [&](int place) {
                return Samples::channelFromUnit(Straighten(Samples::toUnit(from[place]), alpha));
            };
            to[x].red = straight(Order::red);
            to[x].green = straight(Order::green);
            to[x].blue = straight(Order::blue);
        }
    }
}

template <typename Samples, typename Order>
void StoreInOrder(const std::byte* /*input*/, const std::byte* /*before*/, const std::byte* after,
                  std::byte* output, int width) {
    const auto* from = reinterpret_cast<const typename Samples::Pixel*>(after);
    auto* to = reinterpret_cast<typename Samples::Sample*>(output);
    for (int x = 0; x < width; ++x, to += Order::channels) {
        const typename Samples::Pixel pixel = from[x];
        to[Order::red] = pixel.red;
        to[Order::green] = pixel.green;
        to[Order::blue] = pixel.blue;
        to[Order::alpha] = pixel.alpha;
    }
}

/// Few pixels change, so all are copied, and those that have changed are converted one by one.
template <typename Samples, typename Order>
void StoreChanged(const std::byte* input, const std::byte* before, const std::byte* after,
                  std::byte* output, int width) {
    using Pixel = typename Samples::Pixel;
    const auto* old = reinterpret_cast<const Pixel*>(before);
    const auto* made = reinterpret_cast<const Pixel*>(after);
    auto* to = reinterpret_cast<typename Samples::Sample*>(output);
    if (input != output)
        std::copy_n(input, static_cast<std::size_t>(width) * Order::channels * sizeof *to, output);
    for (int x = 0; x < width; ++x, to += Order::channels) {
        if (Identical(old[x], made[x])) continue;
        const auto changed = [&](auto channel) {
            return !SameBits(old[x].*channel, made[x].*channel);
        };
        const auto storeColor = [&](int place, auto color) {
            if constexpr (Order::isMultiplied) {
                if (!changed(color) && !changed(&Pixel::alpha)) return;
                to[place] = Samples::fromUnit(Multiply(Samples::channelToUnit(made[x].*color),
                                                       Samples::channelToUnit(old[x].alpha),
                                                       Samples::channelToUnit(made[x].alpha)));
            } else if (changed(color)) {
                to[place] = Samples::toSample(made[x].*color);
            }
        };
        storeColor(Order::red, &Pixel::red);
        storeColor(Order::green, &Pixel::green);
        storeColor(Order::blue, &Pixel::blue);
        if constexpr (Order::hasAlpha) {
            if (changed(&Pixel::alpha)) to[Order::alpha] = Samples::toSample(made[x].alpha);
        }
    }
}

template <typename Samples, typename Order>
constexpr Layout MakeLayout() {
    constexpr bool sameChannels = Samples::areChannels && Order::hasAlpha && !Order::isMultiplied;
    constexpr int sampleBytes = sizeof(typename Samples::Sample);
    Layout layout{.depth = Samples::depth,
                  .sampleBytes = sampleBytes,
                  .pixelBytes = sampleBytes * Order::channels,
                  .corePixelBytes = sizeof(typename Samples::Pixel),
                  .hasAlpha = Order::hasAlpha,
                  .isCores = sameChannels && std::is_same_v<Order, Argb>,
                  .hasCoresChannels = sameChannels,
                  .load = Load<Samples, Order>,
                  .store = StoreChanged<Samples, Order>};
    if constexpr (sameChannels) layout.store = StoreInOrder<Samples, Order>;
    return layout;
}

// By sample type in the order of nevrel_sample.
constexpr int sampleTypes = 5;
template <typename Order>
struct LayoutsOf {
    static constexpr Layout bySample[sampleTypes] = {
        MakeLayout<Samples8, Order>(), MakeLayout<Samples65535, Order>(),
        MakeLayout<Samples32768, Order>(), MakeLayout<SamplesHalf, Order>(),
        MakeLayout<SamplesFloat, Order>()};
};

}  // namespace

const Layout* FindLayout(nevrel_order order, nevrel_sample sample) noexcept {
    if (sample < 0 || sample >= sampleTypes) return nullptr;
    switch (order) {
        case NEVREL_RGBA:
            return &LayoutsOf<Rgba>::bySample[sample];
        case NEVREL_ARGB:
            return &LayoutsOf<Argb>::bySample[sample];
        case NEVREL_BGRA:
            return &LayoutsOf<Bgra>::bySample[sample];
        case NEVREL_RGB:
            return &LayoutsOf<Rgb>::bySample[sample];
        case NEVREL_RGBA_PREMULTIPLIED:
            return &LayoutsOf<MultipliedRgba>::bySample[sample];
        default:
            return nullptr;
    }
}
