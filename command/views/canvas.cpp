#include "command/views/canvas.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace nevrel {
namespace {

using host_kit::World;

/// A straight pixel in the range 0 to 1.
struct Straight {
    float red, green, blue, alpha;
};

template <typename Pixel>
Straight StraightOf(const Pixel& pixel, float white) {
    const auto unit = [white](auto value) {
        return std::clamp(static_cast<float>(value) / white, 0.0F, 1.0F);
    };
    return {unit(pixel.red), unit(pixel.green), unit(pixel.blue), unit(pixel.alpha)};
}

/// The transfer function of IEC 61966-2-1.
float ToScreen(float linear) {
    return linear <= 0.0031308F ? linear * 12.92F : 1.055F * std::pow(linear, 1 / 2.4F) - 0.055F;
}

template <typename Pixel>
void ShowRows(const World& pixels, float white, bool isLinear, Canvas& canvas) {
    constexpr float light = 0.6F, dark = 0.4F;
    constexpr int square = 8;
    for (int y = 0; y < canvas.height(); ++y) {
        const auto* row = pixels.row<Pixel>(y);
        for (int x = 0; x < canvas.width(); ++x) {
            const Straight straight = StraightOf(row[x], white);
            const float behind = (x / square + y / square) % 2 == 0 ? light : dark;
            const auto shown = [&](float value) {
                const float screen = isLinear ? ToScreen(value) : value;
                const float mixed = screen * straight.alpha + behind * (1 - straight.alpha);
                return static_cast<std::uint8_t>(std::lround(mixed * 255));
            };
            canvas.set(x, y, {shown(straight.red), shown(straight.green), shown(straight.blue)});
        }
    }
}

}  // namespace

Canvas::Canvas(int width, int height, Color fill)
    : width_(width),
      height_(height),
      pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), fill) {}

void Canvas::fill(const Area& area, Color color) {
    for (int y = std::max(area.y, 0); y < std::min(area.y + area.height, height_); ++y) {
        for (int x = std::max(area.x, 0); x < std::min(area.x + area.width, width_); ++x)
            set(x, y, color);
    }
}

void Canvas::outline(const Area& area, Color color) {
    fill({area.x - 1, area.y - 1, area.width + 2, 1}, color);
    fill({area.x - 1, area.y + area.height, area.width + 2, 1}, color);
    fill({area.x - 1, area.y, 1, area.height}, color);
    fill({area.x + area.width, area.y, 1, area.height}, color);
}

void Canvas::draw(const Canvas& from, const Area& part, int x, int y, int scale) {
    for (int dy = 0; dy < part.height; ++dy) {
        for (int dx = 0; dx < part.width; ++dx)
            fill({x + dx * scale, y + dy * scale, scale, scale}, from.at(part.x + dx, part.y + dy));
    }
}

Picture Canvas::picture() const {
    Picture picture{"png", {}, {}};
    picture.parts.push_back(MakePart(MakeSpec(width_, height_, 3, SampleType::UInt8), false));
    static_assert(sizeof(Color) == 3);
    std::memcpy(picture.parts.front().samples.get(), pixels_.data(),
                pixels_.size() * sizeof(Color));
    return picture;
}

Canvas Show(const World& pixels, const Part& part) {
    Canvas canvas(pixels.width(), pixels.height());
    const bool isLinear = part.spec.isLinear;
    switch (pixels.format()) {
        case PF_PixelFormat_ARGB32:
            ShowRows<PF_Pixel>(pixels, 255, isLinear, canvas);
            break;
        case PF_PixelFormat_ARGB64:
            ShowRows<PF_Pixel16>(pixels, 32768, isLinear, canvas);
            break;
        default:
            ShowRows<PF_PixelFloat>(pixels, 1, isLinear, canvas);
    }
    return canvas;
}

void WriteView(const Canvas& canvas, const std::filesystem::path& path) {
    Picture picture = canvas.picture();
    picture.format = FormatForPath(path);
    Remarks remarks;
    WritePicture(picture, path, {}, remarks);
}

}  // namespace nevrel
