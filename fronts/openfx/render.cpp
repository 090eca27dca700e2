#include "fronts/openfx/render.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "fronts/openfx/controls.h"
#include "fronts/openfx/host.h"

namespace {

ofx::RectI Intersection(const ofx::RectI& a, const ofx::RectI& b) {
    return {std::max(a.x1, b.x1), std::max(a.y1, b.y1), std::min(a.x2, b.x2), std::min(a.y2, b.y2)};
}

bool Equal(const ofx::RectI& a, const ofx::RectI& b) {
    return a.x1 == b.x1 && a.y1 == b.y1 && a.x2 == b.x2 && a.y2 == b.y2;
}

bool IsEmpty(const ofx::RectI& rect) { return rect.x1 >= rect.x2 || rect.y1 >= rect.y2; }

/// What a call of the core uses of the host: memory, and whether to go on.
struct Calls {
    ofx::Effect effect;
    std::optional<Memory> scratch;

    nevrel_callbacks callbacks() {
        return {this,
                [](void* self, std::size_t bytes) -> void* {
                    auto& calls = *static_cast<Calls*>(self);
                    return calls.scratch.emplace(calls.effect, bytes).bytes();
                },
                [](void* self, void* /*memory*/) { static_cast<Calls*>(self)->scratch.reset(); },
                [](void* self, std::int32_t /*done*/, std::int32_t /*rows*/) {
                    return suites.effects->abort(static_cast<Calls*>(self)->effect);
                }};
    }
};

/// Smooths the picture of `source` into `area`, which lies in both images. The core always sees the
/// whole picture, from the top row on: the order of the rows is part of the result.
nevrel_status Smooth(ofx::Effect effect, const nevrel_settings& settings, const Image& source,
                     const Image& output, const ofx::RectI& area) {
    const ofx::RectI& bounds = source.bounds;
    const std::int64_t width = std::int64_t{bounds.x2} - bounds.x1;
    const std::int64_t height = std::int64_t{bounds.y2} - bounds.y1;
    if (width > NEVREL_LARGEST_SIDE || height > NEVREL_LARGEST_SIDE) return NEVREL_BAD_SIZE;

    // Copies that the core works on: of straight pixels, and of a result of which a part is taken.
    const Depth& depth = *source.depth;
    const bool divides = source.isPremultiplied && source.components->order == NEVREL_RGBA;
    const bool isDirect = !divides && Equal(area, bounds);
    const int pixelBytes = divides ? depth.straightPixelBytes : source.pixelBytes();
    const std::ptrdiff_t rowBytes = width * pixelBytes;
    std::optional<Memory> memory;
    std::byte* copy = nullptr;
    if (!isDirect) {
        memory.emplace(effect, static_cast<std::size_t>((divides ? 2 : 1) * rowBytes * height));
        copy = memory->bytes();
        if (copy == nullptr) return NEVREL_OUT_OF_MEMORY;
    }
    std::byte* result = divides ? copy + rowBytes * height : copy;
    const auto fromTop = [&](int y) { return (std::ptrdiff_t{bounds.y2} - 1 - y) * rowBytes; };
    const auto topDown = [&](const Image& image) {
        return nevrel_image{image.at(bounds.x1, bounds.y2 - 1), -image.rowBytes};
    };

    for (int y = bounds.y1; divides && y < bounds.y2; ++y)
        depth.divide(source.at(bounds.x1, y), copy + fromTop(y), static_cast<int>(width));
    const nevrel_image from = divides ? nevrel_image{copy, rowBytes} : topDown(source);
    const nevrel_image to = isDirect ? topDown(output) : nevrel_image{result, rowBytes};
    Calls calls{effect, {}};
    const nevrel_callbacks callbacks = calls.callbacks();
    const nevrel_status status = nevrel_smooth(
        &settings, divides ? NEVREL_ARGB : source.components->order,
        divides ? depth.straightSample : depth.sample, static_cast<std::int32_t>(width),
        static_cast<std::int32_t>(height), &from, &to, &callbacks);
    if (status != NEVREL_OK || isDirect) return status;

    const std::ptrdiff_t fromLeft = (std::ptrdiff_t{area.x1} - bounds.x1) * pixelBytes;
    const int areaWidth = area.x2 - area.x1;
    for (int y = area.y1; y < area.y2; ++y) {
        const std::ptrdiff_t start = fromTop(y) + fromLeft;
        std::byte* row = output.at(area.x1, y);
        if (divides) {
            depth.multiply(source.at(area.x1, y), copy + start, result + start, row, areaWidth);
        } else {
            std::copy_n(result + start, std::ptrdiff_t{areaWidth} * pixelBytes, row);
        }
    }
    return status;
}

/// Transparent black.
void Clear(const Image& image, const ofx::RectI& area) {
    for (int y = area.y1; y < area.y2; ++y)
        std::fill(image.at(area.x1, y), image.at(area.x2, y), std::byte{0});
}

ofx::Status SmoothIfAble(ofx::Effect effect, const nevrel_settings& settings, const Image& source,
                         const Image& output, const ofx::RectI& area) {
    if (source.depth != output.depth || source.components != output.components)
        return Refuse(effect, ofx::badImageFormat, "source and output differ in format");
    if (settings.color_key_enable != 0 && source.components->order == NEVREL_RGB)
        return Refuse(effect, ofx::unsupported, "the colour key needs a clip with alpha");
    const nevrel_status status = Smooth(effect, settings, source, output, area);
    switch (status) {
        case NEVREL_OK:
        case NEVREL_CANCELLED:  // by the host itself
            return ofx::ok;
        case NEVREL_OUT_OF_MEMORY:
            return ofx::outOfMemory;
        default:
            return Refuse(effect, ofx::badImageFormat, nevrel_status_text(status));
    }
}

}  // namespace

ofx::Status Render(ofx::Effect effect, ofx::PropertySet inArgs, ofx::PropertySet /*outArgs*/) {
    Properties arguments{inArgs};
    const double time = arguments.real("OfxPropTime");
    const ofx::RectI window = arguments.rect("OfxImageEffectPropRenderWindow");
    const bool isFullFrame = arguments.is("OfxImageEffectPropFieldToRender", "OfxFieldNone");
    if (arguments.status != ofx::ok) return arguments.status;
    if (!isFullFrame)
        return Refuse(effect, ofx::unsupported, "interlaced clips cannot be smoothed");

    nevrel_settings settings;
    const ofx::Status status = ReadControls(effect, time, settings);
    if (status != ofx::ok) return status;
    const Image output(effect, "Output", time);
    if (output.status != ofx::ok) return output.status;
    if (output.data == nullptr) return ofx::failed;
    const Image source(effect, "Source", time);
    if (source.status != ofx::ok) return source.status;

    const ofx::RectI visible = Intersection(window, output.bounds);
    if (IsEmpty(visible)) return ofx::ok;
    const ofx::RectI area =
        source.data == nullptr ? ofx::RectI{} : Intersection(visible, source.bounds);
    if (!Equal(visible, area)) Clear(output, visible);
    return IsEmpty(area) ? ofx::ok : SmoothIfAble(effect, settings, source, output, area);
}
