#include "command/pictures/picture_pixels.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cmath>
#include <cstring>
#include <iterator>
#include <numeric>
#include <type_traits>
#include <utility>
#include <vector>

#include "command/pictures/sample_types.h"

namespace nevrel {
namespace {

using host_kit::World;

/// Pixels `begin` to before `end`, counted row after row.
struct Stretch {
    std::size_t begin, end;
};

/// Calls `action` for stretches of `length` that together are all pixels: what it does to one
/// channel after the other happens within the processor's cache.
template <typename Action>
void ForEachStretch(std::size_t pixels, std::size_t length, Action&& action) {
    for (std::size_t begin = 0; begin < pixels; begin += length)
        action(Stretch{begin, std::min(begin + length, pixels)});
}

/// The channels of an image of the effect, pixel by pixel; places are in memory order alpha, red,
/// green, blue. The image's rows lie without gaps.
template <typename StoredChannel, typename ConvertedChannel>
class WorldView {
  public:
    using Channel = ConvertedChannel;

    explicit WorldView(const World& world)
        : first_(static_cast<StoredChannel*>(world.record().data)) {
        assert(world.record().rowbytes == world.width() * host_kit::PixelBytes(world.format()));
    }

    [[nodiscard]] Channel get(std::size_t pixel, int place) const { return {*at(pixel, place)}; }
    void set(std::size_t pixel, int place, Channel value) const {
        std::memcpy(at(pixel, place), &value, sizeof value);
    }

    /// Whether all channels of the stretch are the same bits.
    [[nodiscard]] bool equals(const WorldView& other, const Stretch& stretch) const {
        const std::size_t channels = (stretch.end - stretch.begin) * 4;
        return std::memcmp(at(stretch.begin, 0), other.at(stretch.begin, 0),
                           channels * sizeof(StoredChannel)) == 0;
    }

  private:
    [[nodiscard]] StoredChannel* at(std::size_t pixel, int place) const {
        return first_ + pixel * 4 + place;
    }

    StoredChannel* first_;
};

using View8 = WorldView<A_u_char, std::uint8_t>;
using View16 = WorldView<A_u_short, Channel16>;
using ViewFloat = WorldView<float, float>;

constexpr int alphaPlace = 0, redPlace = 1;

template <typename Action>
void WithView(const World& world, Action&& action) {
    switch (world.format()) {
        case PF_PixelFormat_ARGB32:
            action(View8(world));
            break;
        case PF_PixelFormat_ARGB64:
            action(View16(world));
            break;
        default:
            action(ViewFloat(world));
            break;
    }
}

bool SameBits(std::uint8_t a, std::uint8_t b) { return a == b; }
bool SameBits(Channel16 a, Channel16 b) { return a.value == b.value; }
bool SameBits(float a, float b) {
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
}

/// Calls `action` with a view of the channel, typed as its samples are.
template <typename Action>
void WithChannel(const Part& part, int channel, Action&& action) {
    [[maybe_unused]] const bool known = WithSampleType(
        part.channel(channel).type,
        [&](auto sample) { action(ChannelView<decltype(sample)>(part, channel), sample); });
    assert(known);
}

/// Like WithChannel for copying: also for samples that are no intensities, such as 32-bit object
/// numbers.
template <typename Action>
void WithRawChannel(const Part& part, int channel, Action&& action) {
    switch (SampleBytes(part.channel(channel).type)) {
        case 1:
            action(ChannelView<std::uint8_t>(part, channel));
            break;
        case 2:
            action(ChannelView<std::uint16_t>(part, channel));
            break;
        case 4:
            action(ChannelView<std::uint32_t>(part, channel));
            break;
        default:
            action(ChannelView<std::uint64_t>(part, channel));
            break;
    }
}

std::array<int, 3> Colors(const ColorChannels& channels) {
    return {channels.red, channels.green, channels.blue};
}

template <typename View>
void LoadChannel(const Part& part, int channel, const Stretch& stretch, View view, int place) {
    WithChannel(part, channel, [stretch, view, place](auto samples, auto) {
        for (std::size_t i = stretch.begin; i < stretch.end; ++i) {
            view.set(i, place, Convert<typename View::Channel>(samples.get(i)));
        }
    });
}

template <typename View>
void LoadAssociatedColor(const Part& part, int channel, int alphaChannel, const Stretch& stretch,
                         const View& view, int place) {
    WithChannel(part, alphaChannel, [&](auto alphas, auto) {
        WithChannel(part, channel, [&](auto samples, auto) {
            for (std::size_t i = stretch.begin; i < stretch.end; ++i) {
                const double straight = Straighten(ToUnit(samples.get(i)), ToUnit(alphas.get(i)));
                view.set(i, place, FromUnit<typename View::Channel>(straight));
            }
        });
    });
}

template <typename View>
void StoreChannel(const View& before, const View& after, int place, const Stretch& stretch,
                  const Part& part, int channel) {
    WithChannel(part, channel, [&](auto samples, auto sample) {
        for (std::size_t i = stretch.begin; i < stretch.end; ++i) {
            const auto value = after.get(i, place);
            if (!SameBits(before.get(i, place), value))
                samples.set(i, Convert<decltype(sample)>(value));
        }
    });
}

template <typename View>
void StoreAssociatedColor(const View& before, const View& after, int place, const Stretch& stretch,
                          const Part& part, int channel) {
    WithChannel(part, channel, [&](auto samples, auto sample) {
        for (std::size_t i = stretch.begin; i < stretch.end; ++i) {
            const auto oldAlpha = before.get(i, alphaPlace);
            const auto alpha = after.get(i, alphaPlace);
            const auto value = after.get(i, place);
            if (SameBits(before.get(i, place), value) && SameBits(oldAlpha, alpha)) continue;
            samples.set(i, FromUnit<decltype(sample)>(
                               Multiply(ToUnit(value), ToUnit(oldAlpha), ToUnit(alpha))));
        }
    });
}

constexpr int opaqueAlpha = -1;

void CopyChannel(const Part& from, int source, const Part& to, int target) {
    WithRawChannel(from, source, [&](auto samples) {
        const decltype(samples) copies(to, target);
        for (std::size_t i = 0; i < from.pixels(); ++i) copies.set(i, samples.get(i));
    });
}

void FillOpaque(const Part& part, int channel) {
    WithChannel(part, channel, [&](auto samples, auto sample) {
        for (std::size_t i = 0; i < part.pixels(); ++i)
            samples.set(i, FromUnit<decltype(sample)>(1.0));
    });
}

/// Leaves of a changed pixel the share `weight`; colour counts as much as its alpha.
template <typename View>
void MixPixel(const View& before, const View& after, std::size_t pixel, double weight) {
    using Channel = typename View::Channel;
    constexpr double almostOne = 1 - 1e-6;  // thirds of white may not add up to one
    if (weight >= almostOne) return;
    const bool isBlack = !(weight > 0);
    const auto unit = [&](const View& view, int place) { return ToUnit(view.get(pixel, place)); };
    const double share = unit(after, alphaPlace) * weight;
    const double alpha = unit(before, alphaPlace) * (1 - weight) + share;
    for (int place = redPlace; place < 4; ++place) {
        const Channel own = before.get(pixel, place);
        if (isBlack || alpha == 0) {
            after.set(pixel, place, own);
        } else if (!SameBits(own, after.get(pixel, place))) {
            const double step = unit(after, place) - unit(before, place);
            after.set(pixel, place, FromUnit<Channel>(unit(before, place) + step * share / alpha));
        }
    }
    if (isBlack) {
        after.set(pixel, alphaPlace, before.get(pixel, alphaPlace));
    } else if (!SameBits(before.get(pixel, alphaPlace), after.get(pixel, alphaPlace))) {
        after.set(pixel, alphaPlace, FromUnit<Channel>(alpha));
    }
}

/// A part whose channels, named by `spec`, are those at `sources` in `part`, or opaque alpha of the
/// type of channel `like`.
Part Rearranged(const Part& part, PartSpec spec, const std::vector<int>& sources, int like) {
    for (std::size_t i = 0; i < sources.size(); ++i)
        spec.channels[i].type = part.channel(sources[i] == opaqueAlpha ? like : sources[i]).type;
    Part arranged = MakePart(spec, part.associated);
    for (int channel = 0; channel < static_cast<int>(sources.size()); ++channel) {
        const int source = sources[static_cast<std::size_t>(channel)];
        if (source == opaqueAlpha) {
            FillOpaque(arranged, channel);
        } else {
            CopyChannel(part, source, arranged, channel);
        }
    }
    return arranged;
}

}  // namespace

void LoadPixels(const Part& part, const ColorChannels& channels, World& world) {
    constexpr std::size_t length = 1024;
    const bool isAssociated = part.associated && channels.alpha >= 0;
    WithView(world, [&](const auto& view) {
        using Channel = typename std::decay_t<decltype(view)>::Channel;
        ForEachStretch(part.pixels(), length, [&](const Stretch& stretch) {
            if (channels.alpha >= 0) {
                LoadChannel(part, channels.alpha, stretch, view, alphaPlace);
            } else {
                for (std::size_t i = stretch.begin; i < stretch.end; ++i)
                    view.set(i, alphaPlace, FromUnit<Channel>(1.0));
            }
            int place = redPlace;
            for (const int channel : Colors(channels)) {
                if (isAssociated) {
                    LoadAssociatedColor(part, channel, channels.alpha, stretch, view, place++);
                } else {
                    LoadChannel(part, channel, stretch, view, place++);
                }
            }
        });
    });
}

void StorePixels(const World& before, const World& after, const ColorChannels& channels,
                 Part& part) {
    constexpr std::size_t length =
        16;  // little of a picture changes: most stretches are passed over
    WithView(before, [&](const auto& beforeView) {
        const std::decay_t<decltype(beforeView)> afterView(after);
        ForEachStretch(part.pixels(), length, [&](const Stretch& stretch) {
            if (beforeView.equals(afterView, stretch)) return;
            int place = redPlace;
            for (const int channel : Colors(channels)) {
                if (place > redPlace && channels.isGrey()) break;
                if (part.associated && channels.alpha >= 0) {
                    StoreAssociatedColor(beforeView, afterView, place++, stretch, part, channel);
                } else {
                    StoreChannel(beforeView, afterView, place++, stretch, part, channel);
                }
            }
            if (channels.alpha >= 0)
                StoreChannel(beforeView, afterView, alphaPlace, stretch, part, channels.alpha);
        });
    });
}

std::vector<double> MaskWeights(const Part& mask, const ColorChannels& channels) {
    std::vector<double> weights(mask.pixels());
    for (const int channel : Colors(channels)) {
        WithChannel(mask, channel, [&](auto samples, auto) {
            for (std::size_t i = 0; i < weights.size(); ++i)
                weights[i] += ToUnit(samples.get(i)) / 3;
        });
    }
    return weights;
}

void ApplyMask(const std::vector<double>& weights, const World& before, World& after) {
    WithView(before, [&](const auto& beforeView) {
        const std::decay_t<decltype(beforeView)> afterView(after);
        for (std::size_t i = 0; i < weights.size(); ++i)
            MixPixel(beforeView, afterView, i, weights[i]);
    });
}

void AddAlpha(Part& part, ColorChannels& channels) {
    assert(channels.alpha < 0);
    const int place = std::max({channels.red, channels.green, channels.blue}) + 1;
    PartSpec spec = part.spec;
    std::vector<int> sources(spec.channels.size());
    std::iota(sources.begin(), sources.end(), 0);
    sources.insert(sources.begin() + place, opaqueAlpha);
    spec.channels.insert(spec.channels.begin() + place, {channels.prefix + "A", {}});
    for (int* named : {&spec.alphaChannel, &spec.depthChannel}) *named += *named >= place ? 1 : 0;
    if (spec.alphaChannel < 0) spec.alphaChannel = place;
    part = Rearranged(part, spec, sources, channels.green);
    channels.alpha = place;
}

void ExpandGrey(Part& part, ColorChannels& channels) {
    assert(channels.isGrey() && channels.alpha >= 0);
    PartSpec spec = part.spec;
    spec.channels = {{"R", {}}, {"G", {}}, {"B", {}}, {"A", {}}};
    spec.alphaChannel = 3;
    part = Rearranged(part, spec, {channels.red, channels.red, channels.red, channels.alpha},
                      channels.red);
    channels = {channels.part, 0, 1, 2, 3, ""};
}

void RoundToBits(Part& part, int bits) {
    assert(bits > 8 && bits <= 16);
    const double largest = (1U << static_cast<unsigned>(bits)) - 1;
    const int rest = 16 - bits;
    for (int channel = 0; channel < std::ssize(part.spec.channels); ++channel) {
        const ChannelView<std::uint16_t> samples(part, channel);
        for (std::size_t i = 0; i < part.pixels(); ++i) {
            const long rounded = std::lround(ToUnit(samples.get(i)) * largest);
            samples.set(i, static_cast<std::uint16_t>(rounded << rest | rounded >> (bits - rest)));
        }
    }
}

Part ToIntegers(const Part& part) {
    PartSpec spec = part.spec;
    spec.setType(SampleType::UInt16);
    Part integers = MakePart(spec, part.associated);
    for (int channel = 0; channel < std::ssize(spec.channels); ++channel) {
        const ChannelView<std::uint16_t> target(integers, channel);
        WithChannel(part, channel, [&](auto samples, auto) {
            for (std::size_t i = 0; i < part.pixels(); ++i)
                target.set(i, Convert<std::uint16_t>(samples.get(i)));
        });
    }
    return integers;
}

Part Recast(const Part& part, const ColorChannels& channels, bool associated) {
    PartSpec spec = part.spec;
    spec.setType(SampleType::Float);
    Part recast = MakePart(spec, associated);
    for (int channel = 0; channel < std::ssize(spec.channels); ++channel) {
        const ChannelView<float> target(recast, channel);
        const bool isColor =
            channel == channels.red || channel == channels.green || channel == channels.blue;
        WithChannel(part, channel, [&](auto samples, auto) {
            for (std::size_t i = 0; i < part.pixels(); ++i)
                target.set(i, Convert<float>(samples.get(i)));
        });
        if (!isColor || channels.alpha < 0 || part.associated == associated) continue;
        WithChannel(part, channels.alpha, [&](auto alphas, auto) {
            for (std::size_t i = 0; i < part.pixels(); ++i) {
                const double alpha = ToUnit(alphas.get(i));
                const double color = ToUnit(target.get(i));
                target.set(i,
                           FromUnit<float>(associated ? color * alpha : Straighten(color, alpha)));
            }
        });
    }
    return recast;
}

}  // namespace nevrel
