// Between a picture's samples and the images that the effect works on.
#pragma once

#include <vector>

#include "command/pictures/color_channels.h"
#include "command/pictures/picture.h"
#include "host_kit/world.h"

namespace nevrel {

/// Fills `world` with the picture's pixels in straight colour; opaque where the picture has no
/// alpha channel.
void LoadPixels(const Part& part, const ColorChannels& channels, host_kit::World& world);

/// Takes the pixels that the effect changed over into the picture: every channel whose value is the
/// same in `before` and `after` keeps the picture's own sample, bit for bit.
void StorePixels(const host_kit::World& before, const host_kit::World& after,
                 const ColorChannels& channels, Part& part);

/// A mask's grey at each pixel, from 0, black, to 1, white; of a mask in colour the mean.
[[nodiscard]] std::vector<double> MaskWeights(const Part& mask, const ColorChannels& channels);

/// Leaves at each pixel the share of what the effect changed that `weights` say; 1 leaves all.
void ApplyMask(const std::vector<double>& weights, const host_kit::World& before,
               host_kit::World& after);

/// Gives the part an opaque alpha channel behind its last colour channel, and sets it in
/// `channels`.
void AddAlpha(Part& part, ColorChannels& channels);

/// Makes a grey part with alpha an RGBA one, for formats without the former; its other channels go.
void ExpandGrey(Part& part, ColorChannels& channels);

/// Rounds 16-bit samples to the nearest that `bits` of them can hold, 9 to 16; writers cut off the
/// others.
void RoundToBits(Part& part, int bits);

/// The part with 16-bit samples instead of float ones.
[[nodiscard]] Part ToIntegers(const Part& part);

/// The part with float samples and colour multiplied by alpha or not, for formats that store it
/// otherwise. Where alpha is 0, straight colour is lost by multiplication.
[[nodiscard]] Part Recast(const Part& part, const ColorChannels& channels, bool associated);

}  // namespace nevrel
