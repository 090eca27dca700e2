#include "samples/frames.h"

#include <algorithm>
#include <cstdlib>

#include "samples/chance.h"
#include "samples/palette.h"
#include "samples/scene.h"

namespace {

Image8 Cel(int width, int height) {
    Image8 image(width, height, paper);
    DrawFigure(image);
    return image;
}

/// A blade of grass with its veins, growing upwards from the origin and bending over by `bend`.
void DrawBlade(const Painter& painter, double length, double bend, PF_Pixel colour) {
    painter.shape({{-7, 0, corner},
                   {bend * 0.2 - 9, -0.5 * length},
                   {bend, -length, corner},
                   {bend * 0.2 + 9, -0.5 * length},
                   {7, 0, corner}},
                  colour, fineLine);
    painter.ink({{0, 0}, {bend * 0.2, -0.5 * length}, {bend, -length}}, fineLine);
}

/// The figure in a meadow. The blades of grass keep their size in pixels however large the frame
/// is.
Image8 Busy(int width, int height) {
    const PF_Pixel paints[] = {green, green.shadow, yellow.shadow, iron, cloth.shadow};
    Image8 image(width, height, green);
    const Painter meadow(image, {}, 1);
    Chance chance(1);
    constexpr int columnsApart = 26;
    constexpr int rowsApart = 34;
    for (int y = 0; y < height + 160; y += rowsApart) {
        for (int x = -columnsApart; x < width + columnsApart; x += columnsApart) {
            const Point root{x + chance.roll(2 * columnsApart) + 0.3,
                             y + chance.roll(rowsApart) + 0.3};
            const int length = 90 + chance.roll(70);
            const int bend = chance.roll(121) - 60;
            DrawBlade(meadow.placed(root, 1), length, bend, paints[chance.roll(5)]);
        }
    }
    DrawFigure(image);
    return image;
}

Image8 Noise(int width, int height) {
    Image8 image(width, height);
    Chance chance(2);
    for (PF_Pixel& pixel : image.pixels)
        pixel = Colour(static_cast<unsigned>(chance.roll(1 << 24)));
    return image;
}

constexpr int linePitch = 12;

/// Whether a place `across` parallel lines that are alternately one and two pixels wide lies on one
/// of them.
bool IsOnLine(int across) {
    const int place = across % (2 * linePitch);
    return place == 0 || place == linePitch || place == linePitch + 1;
}

/// Horizontal lines in the upper half, vertical ones in the lower half, so that none interrupts
/// another. Each steps aside by one pixel half way.
Image8 Lines(int width, int height) {
    Image8 image(width, height, white);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const bool upper = y < height / 2;
            const int across =
                upper ? y + (x < width / 2 ? 0 : 1) : x + (y < height / 4 * 3 ? 0 : 1);
            if (IsOnLine(across)) image.at(x, y) = ink;
        }
    }
    return image;
}

/// Lines at 45 degrees, falling in the upper half and rising in the lower half.
Image8 Diagonals(int width, int height) {
    Image8 image(width, height, white);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (IsOnLine(y < height / 2 ? x + height - y : x + y)) image.at(x, y) = ink;
        }
    }
    return image;
}

template <typename To, typename Channel>
Image<To> Converted(const Image8& frame, Channel channel) {
    Image<To> result(frame.width, frame.height);
    std::transform(
        frame.pixels.begin(), frame.pixels.end(), result.pixels.begin(), [channel](PF_Pixel p) {
            return To{channel(p.alpha), channel(p.red), channel(p.green), channel(p.blue)};
        });
    return result;
}

int Distance(PF_Pixel a, PF_Pixel b) {
    return std::abs(a.alpha - b.alpha) + std::abs(a.red - b.red) + std::abs(a.green - b.green) +
           std::abs(a.blue - b.blue);
}

}  // namespace

Image8 MakeFrame(FrameKind kind, int width, int height) {
    switch (kind) {
        case FrameKind::blank:
            break;
        case FrameKind::cel:
            return Cel(width, height);
        case FrameKind::busy:
            return Busy(width, height);
        case FrameKind::noise:
            return Noise(width, height);
        case FrameKind::lines:
            return Lines(width, height);
        case FrameKind::diagonals:
            return Diagonals(width, height);
    }
    return {width, height, cloth};
}

Image16 ToDepth16(const Image8& frame) {
    return Converted<PF_Pixel16>(
        frame, [](A_u_char c) { return static_cast<A_u_short>((c * 32768 + 127) / 255); });
}

ImageFloat ToDepthFloat(const Image8& frame) {
    return Converted<PF_PixelFloat>(frame,
                                    [](A_u_char c) { return static_cast<float>(c) / 255.0F; });
}

double EdgeShare(const Image8& frame, int threshold) {
    long long edges = 0;
    for (int y = 0; y < frame.height; ++y) {
        for (int x = 0; x < frame.width; ++x) {
            const PF_Pixel here = frame.at(x, y);
            const PF_Pixel right = frame.at(std::min(x + 1, frame.width - 1), y);
            const PF_Pixel below = frame.at(x, std::min(y + 1, frame.height - 1));
            const PF_Pixel across =
                frame.at(std::min(x + 1, frame.width - 1), std::min(y + 1, frame.height - 1));
            edges += Distance(here, right) > threshold || Distance(here, below) > threshold ||
                     Distance(here, across) > threshold || Distance(right, below) > threshold;
        }
    }
    return static_cast<double>(edges) / static_cast<double>(frame.pixels.size());
}
