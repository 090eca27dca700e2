#include "standalone/nevrel/picture_pixels.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstring>
#include <type_traits>
#include <utility>

#include "standalone/nevrel/sample_types.h"

namespace nevrel {
namespace {

using standalone::World;

/// The channels of an image of the effect, pixel by pixel; places are in memory order alpha, red, green,
/// blue. The image's rows lie without gaps.
template <typename StoredChannel, typename ConvertedChannel>
class WorldView {
  public:
    using Channel = ConvertedChannel;

    explicit WorldView(const World& world) : first_(static_cast<StoredChannel*>(world.record().data)) {
        assert(world.record().rowbytes == world.width() * standalone::PixelBytes(world.format()));
    }

    [[nodiscard]] Channel get(std::size_t pixel, int place) const { return {*at(pixel, place)}; }
    void set(std::size_t pixel, int place, Channel value) const {
        std::memcpy(at(pixel, place), &value, sizeof value);
    }

  private:
    [[nodiscard]] StoredChannel* at(std::size_t pixel, int place) const { return first_ + pixel * 4 + place; }

    StoredChannel* first_;
};

using View8 = WorldView<A_u_char, std::uint8_t>;
using View16 = WorldView<A_u_short, Channel16>;
using ViewFloat = WorldView<float, float>;

constexpr int kAlpha = 0, kRed = 1;

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

template <typename Channel>
bool SameBits(Channel a, Channel b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

/// Calls `action` with a view of the channel, typed as its samples are.
template <typename Action>
void WithChannel(const Part& part, int channel, Action&& action) {
    [[maybe_unused]] const bool known = WithSampleType(part.channelType(channel), [&](auto sample) {
        action(ChannelView<decltype(sample)>(part, channel), sample);
    });
    assert(known);
}

std::array<int, 3> Colors(const ColorChannels& channels) {
    return {channels.red, channels.green, channels.blue};
}

/// Straight colour of a sample that was multiplied by alpha; where alpha is 0 the sample itself.
double Straighten(double color, double alpha) { return alpha == 0 ? color : color / alpha; }

template <typename View>
void LoadChannel(const Part& part, int channel, const View& view, int place) {
    WithChannel(part, channel, [&](auto samples, auto) {
        for (std::size_t i = 0; i < part.pixels(); ++i) {
            view.set(i, place, Convert<typename View::Channel>(samples.get(i)));
        }
    });
}

template <typename View>
void LoadAssociatedColor(const Part& part, int channel, int alphaChannel, const View& view, int place) {
    WithChannel(part, alphaChannel, [&](auto alphas, auto) {
        WithChannel(part, channel, [&](auto samples, auto) {
            for (std::size_t i = 0; i < part.pixels(); ++i) {
                const double straight = Straighten(ToUnit(samples.get(i)), ToUnit(alphas.get(i)));
                view.set(i, place, FromUnit<typename View::Channel>(straight));
            }
        });
    });
}

template <typename View>
void StoreChannel(const View& before, const View& after, int place, const Part& part, int channel) {
    WithChannel(part, channel, [&](auto samples, auto sample) {
        for (std::size_t i = 0; i < part.pixels(); ++i) {
            const auto value = after.get(i, place);
            if (!SameBits(before.get(i, place), value)) samples.set(i, Convert<decltype(sample)>(value));
        }
    });
}

template <typename View>
void StoreAssociatedColor(const View& before, const View& after, int place, const Part& part, int channel) {
    WithChannel(part, channel, [&](auto samples, auto sample) {
        for (std::size_t i = 0; i < part.pixels(); ++i) {
            const auto oldAlpha = before.get(i, kAlpha);
            const auto alpha = after.get(i, kAlpha);
            const auto value = after.get(i, place);
            if (SameBits(before.get(i, place), value) && SameBits(oldAlpha, alpha)) continue;
            const bool stayedClear =
                ToUnit(oldAlpha) == 0 && ToUnit(alpha) == 0;  // then colour is stored as it is
            const double factor = stayedClear ? 1.0 : ToUnit(alpha);
            samples.set(i, FromUnit<decltype(sample)>(ToUnit(value) * factor));
        }
    });
}

OIIO::ImageSpec WithAlphaChannel(const OIIO::ImageSpec& spec, int place, const ColorChannels& channels) {
    OIIO::ImageSpec wider = spec;
    ++wider.nchannels;
    if (wider.alpha_channel < 0) {
        wider.alpha_channel = place;
    } else if (wider.alpha_channel >= place) {
        ++wider.alpha_channel;
    }
    if (wider.z_channel >= place) ++wider.z_channel;
    const std::string name = channels.prefix + "A";
    wider.channelnames.insert(wider.channelnames.begin() + place, name);
    if (!wider.channelformats.empty()) {
        wider.channelformats.insert(wider.channelformats.begin() + place, spec.channelformat(channels.green));
    }
    return wider;
}

}  // namespace

void LoadPixels(const Part& part, const ColorChannels& channels, World& world) {
    WithView(world, [&](const auto& view) {
        using Channel = typename std::decay_t<decltype(view)>::Channel;
        if (channels.alpha >= 0) {
            LoadChannel(part, channels.alpha, view, kAlpha);
        } else {
            for (std::size_t i = 0; i < part.pixels(); ++i) view.set(i, kAlpha, FromUnit<Channel>(1.0));
        }
        int place = kRed;
        for (const int channel : Colors(channels)) {
            if (part.associated && channels.alpha >= 0) {
                LoadAssociatedColor(part, channel, channels.alpha, view, place++);
            } else {
                LoadChannel(part, channel, view, place++);
            }
        }
    });
}

void StorePixels(const World& before, const World& after, const ColorChannels& channels, Part& part) {
    WithView(before, [&](const auto& beforeView) {
        const std::decay_t<decltype(beforeView)> afterView(after);
        int place = kRed;
        for (const int channel : Colors(channels)) {
            if (place > kRed && channels.isGrey()) break;
            if (part.associated && channels.alpha >= 0) {
                StoreAssociatedColor(beforeView, afterView, place++, part, channel);
            } else {
                StoreChannel(beforeView, afterView, place++, part, channel);
            }
        }
        if (channels.alpha >= 0) StoreChannel(beforeView, afterView, kAlpha, part, channels.alpha);
    });
}

void AddAlpha(Part& part, ColorChannels& channels, bool associated) {
    assert(channels.alpha < 0);
    const int place = std::max({channels.red, channels.green, channels.blue}) + 1;
    Part wider = MakePart(WithAlphaChannel(part.spec, place, channels), associated);
    const std::size_t lead = part.spec.pixel_bytes(0, place, true);
    const std::size_t rest = part.spec.pixel_bytes(true) - lead;
    const std::size_t added = wider.channelType(place).size();
    const std::byte* from = part.samples.get();
    std::byte* to = wider.samples.get();
    for (std::size_t i = 0; i < part.pixels(); ++i, from += lead + rest, to += lead + added + rest) {
        std::memcpy(to, from, lead);
        std::memcpy(to + lead + added, from + lead, rest);
    }
    WithChannel(wider, place, [&](auto alphas, auto sample) {
        for (std::size_t i = 0; i < wider.pixels(); ++i) alphas.set(i, FromUnit<decltype(sample)>(1.0));
    });
    for (int* channel : {&channels.red, &channels.green, &channels.blue})
        *channel += *channel >= place ? 1 : 0;
    channels.alpha = place;
    part = std::move(wider);
}

Part Recast(const Part& part, const ColorChannels& channels, bool associated) {
    OIIO::ImageSpec spec = part.spec;
    spec.set_format(OIIO::TypeDesc::FLOAT);
    spec.channelformats.clear();
    Part recast = MakePart(spec, associated);
    for (int channel = 0; channel < spec.nchannels; ++channel) {
        const ChannelView<float> target(recast, channel);
        const bool isColor = channel == channels.red || channel == channels.green || channel == channels.blue;
        WithChannel(part, channel, [&](auto samples, auto) {
            for (std::size_t i = 0; i < part.pixels(); ++i) target.set(i, Convert<float>(samples.get(i)));
        });
        if (!isColor || channels.alpha < 0 || part.associated == associated) continue;
        WithChannel(part, channels.alpha, [&](auto alphas, auto) {
            for (std::size_t i = 0; i < part.pixels(); ++i) {
                const double alpha = ToUnit(alphas.get(i));
                const double color = ToUnit(target.get(i));
                target.set(i, FromUnit<float>(associated ? color * alpha : Straighten(color, alpha)));
            }
        });
    }
    return recast;
}

}  // namespace nevrel
