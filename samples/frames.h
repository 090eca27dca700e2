// Frames of any size for benchmarks and tests, the same on every platform.
#pragma once

#include "samples/image.h"

enum class FrameKind {
    blank,      ///< one colour
    cel,        ///< one painted figure; 2 to 4 % edge pixels at 1080 and 2160 lines
    busy,       ///< the figure in a meadow of thin lines; 30 to 40 % edge pixels
    noise,      ///< every pixel a random colour; over 90 % edge pixels
    lines,      ///< horizontal and vertical lines from border to border, each with one step
    diagonals,  ///< lines at 45 degrees from border to border
};

/// A frame of 8-bit pixels, all of them opaque.
[[nodiscard]] Image8 MakeFrame(FrameKind kind, int width, int height);

/// The same frame with channels of 0..32768.
[[nodiscard]] Image16 ToDepth16(const Image8& frame);

/// The same frame with float channels of 0..1.
[[nodiscard]] ImageFloat ToDepthFloat(const Image8& frame);

/// The share of pixels, 0..1, that are part of an edge: in the square of a pixel and its right,
/// lower and lower-right neighbours, two of different pixels' colours are further apart than
/// `threshold`.
[[nodiscard]] double EdgeShare(const Image8& frame, int threshold);
