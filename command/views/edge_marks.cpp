#include "command/views/edge_marks.h"

#include <algorithm>
#include <cmath>

#include "command/controls.h"
#include "kernel/kernels.h"
#include "kernel/shapes/runs.h"

namespace nevrel {
namespace {

using host_kit::Instance;
using host_kit::World;

EffectValues ValuesOf(const Instance& instance) {
    const auto value = [&](ParamId id) { return instance.param(id).u; };
    const PF_Pixel key = value(idKeyColor).cd.value;
    return {.colorThreshold = value(idColorThreshold).sd.value,
            .softness = value(idSoftness).sd.value,
            .bias = value(idBias).sd.value,
            .colorKeyEnable = value(idColorKeyEnable).bd.value,
            .keyRed = key.red,
            .keyGreen = key.green,
            .keyBlue = key.blue,
            .keyThreshold = value(idKeyThreshold).sd.value,
            .keyInvert = value(idKeyInvert).bd.value};
}

PixelDepth DepthOf(PF_PixelFormat format) {
    if (format == PF_PixelFormat_ARGB32) return PixelDepth::bits8;
    return format == PF_PixelFormat_ARGB64 ? PixelDepth::bits16 : PixelDepth::floats;
}

class Marker {
  public:
    Marker(const EdgeMap& map, EdgeMarks& marks) : map_(map), marks_(marks) {}

    void markPieces(int x, int y) {
        if (map_.R(x, y)) {
            at(x, y) |= EdgeMarks::right;
            markRun<Side::left>(x, y);
            markRun<Side::right>(x, y);
        }
        if (map_.D(x, y)) {
            at(x, y) |= EdgeMarks::below;
            markRun<Side::up>(x, y);
            markRun<Side::down>(x, y);
        }
    }

  private:
    template <Side side>
    void markRun(int x, int y) {
        const int length = RunLength<side>(map_, x, y);
        if (length == 0) return;
        const unsigned mark = std::min(static_cast<unsigned>(length), EdgeMarks::longest);
        constexpr int first = StepOf(side) < 0 ? 0 : 1;
        for (int i = 0; i <= length; ++i) {
            const Offset way = AlongSide<side>(first + i * StepOf(side), 0);
            const int px = x + way.dx, py = y + way.dy;
            if (px < 0 || px >= marks_.width || py < 0 || py >= marks_.height) return;
            std::uint8_t& byte = at(px, py);
            if (mark <= byte >> EdgeMarks::lengthShift) continue;
            const unsigned edges = byte & (EdgeMarks::right | EdgeMarks::below);
            byte = static_cast<std::uint8_t>(edges | mark << EdgeMarks::lengthShift);
        }
    }

    [[nodiscard]] std::uint8_t& at(int x, int y) {
        return marks_.bytes[static_cast<std::size_t>(y) * static_cast<std::size_t>(marks_.width) +
                            static_cast<std::size_t>(x)];
    }

    const EdgeMap& map_;
    EdgeMarks& marks_;
};

Color Mix(Color a, Color b, float share) {
    const auto mix = [share](std::uint8_t from, std::uint8_t to) {
        return static_cast<std::uint8_t>(
            std::lround(static_cast<float>(from) + share * static_cast<float>(to - from)));
    };
    return {mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue)};
}

}  // namespace

EdgeMarks FindEdgeMarks(const World& pixels, const Instance& instance) {
    const int width = pixels.width(), height = pixels.height();
    const EffectValues values = ValuesOf(instance);
    const PixelDepth depth = DepthOf(pixels.format());
    World copy(pixels.format(), width, height);
    const Images images{pixels.record().data,
                        pixels.record().rowbytes,
                        copy.record().data,
                        copy.record().rowbytes,
                        width,
                        height};
    std::vector<std::uint8_t> scratch(ScratchBytes(width, height));
    CopyInput(depth, values, images);
    const EdgeMap map = FindEdges(depth, values, images, scratch.data());
    EdgeMarks marks{width, height, {}};
    marks.bytes.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    Marker marker(map, marks);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) marker.markPieces(x, y);
    }
    return marks;
}

std::array<Color, EdgeMarks::longest + 1> MarkColors() {
    constexpr Color edge{230, 0, 60}, shortRun{255, 160, 0}, middle{0, 190, 80},
        longRun{0, 90, 255};
    constexpr float middleLength = 6, longLength = 32;
    std::array<Color, EdgeMarks::longest + 1> colors{edge};
    for (std::size_t i = 1; i < colors.size(); ++i) {
        const float length = std::min(static_cast<float>(i), longLength);
        const auto share = [&](float from, float to) {
            return std::log(length / from) / std::log(to / from);
        };
        colors[i] = length < middleLength ? Mix(shortRun, middle, share(1, middleLength))
                                          : Mix(middle, longRun, share(middleLength, longLength));
    }
    return colors;
}

Canvas DrawEdges(const Canvas& picture, const EdgeMarks& marks) {
    constexpr Color paper{255, 255, 255};
    constexpr int largestSide = 16384;
    const int scale = std::clamp(largestSide / std::max(picture.width(), picture.height()), 1, 4);
    const auto colors = MarkColors();
    Canvas canvas(picture.width() * scale, picture.height() * scale);
    for (int y = 0; y < marks.height; ++y) {
        for (int x = 0; x < marks.width; ++x) {
            const unsigned mark =
                marks.bytes[static_cast<std::size_t>(y) * static_cast<std::size_t>(marks.width) +
                            static_cast<std::size_t>(x)];
            Color pixel = Mix(picture.at(x, y), paper, 0.6F);
            if (const unsigned length = mark >> EdgeMarks::lengthShift; length > 0)
                pixel = Mix(pixel, colors[length], 0.6F);
            const int left = x * scale, top = y * scale;
            canvas.fill({left, top, scale, scale}, pixel);
            if ((mark & EdgeMarks::right) != 0)
                canvas.fill({left + scale - 1, top, 1, scale}, colors[0]);
            if ((mark & EdgeMarks::below) != 0)
                canvas.fill({left, top + scale - 1, scale, 1}, colors[0]);
        }
    }
    return canvas;
}

}  // namespace nevrel
