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

    const auto topDown = [&](const Image& image) {
        return nevrel_image{image.at(bounds.x1, bounds.y2 - 1), -image.rowBytes};
    };
    const nevrel_image from = topDown(source);
    // Where a part of the result is taken, all of it goes into a copy first.
    const bool isDirect = Equal(area, bounds);
    const std::ptrdiff_t rowBytes = width * source.pixelBytes();
    std::optional<Memory> memory;
    if (!isDirect) memory.emplace(effect, static_cast<std::size_t>(rowBytes * height));
    const nevrel_image to = isDirect ? topDown(output) : nevrel_image{memory->bytes(), rowBytes};
    if (to.pixels == nullptr) return NEVREL_OUT_OF_MEMORY;

    Calls calls{effect, {}};
    const nevrel_callbacks callbacks = calls.callbacks();
    const nevrel_status status = nevrel_smooth(
        &settings, source.order, source.depth->sample, static_cast<std::int32_t>(width),
        static_cast<std::int32_t>(height), &from, &to, &callbacks);
    if (status != NEVREL_OK || isDirect) return status;

    const std::ptrdiff_t fromLeft = (std::ptrdiff_t{area.x1} - bounds.x1) * source.pixelBytes();
    for (int y = area.y1; y < area.y2; ++y) {
        const std::ptrdiff_t fromTop = (std::ptrdiff_t{bounds.y2} - 1 - y) * rowBytes;
        std::copy_n(memory->bytes() + fromTop + fromLeft,
                    (std::ptrdiff_t{area.x2} - area.x1) * source.pixelBytes(),
                    output.at(area.x1, y));
    }
    return status;
}

/// Transparent black.
void Clear(const Image& image, const ofx::RectI& area) {
    for (int y = area.y1; y < area.y2; ++y)
        std::fill(image.at(area.x1, y), image.at(area.x2, y), std::byte{0});
}

void SmoothIfAble(ofx::Effect effect, const nevrel_settings& settings, const Image& source,
                  const Image& output, const ofx::RectI& area) {
    if (source.depth != output.depth || source.components != output.components)
        Refuse(effect, ofx::badImageFormat, "source and output differ in format");
    if (settings.color_key_enable != 0 && source.order == NEVREL_RGB)
        Refuse(effect, ofx::unsupported, "the colour key needs a clip with alpha");
    const nevrel_status status = Smooth(effect, settings, source, output, area);
    if (status == NEVREL_OUT_OF_MEMORY) Require(ofx::outOfMemory);
    if (status != NEVREL_OK && status != NEVREL_CANCELLED)  // the latter by the host itself
        Refuse(effect, ofx::badImageFormat, nevrel_status_text(status));
}

}  // namespace

ofx::Status Render(ofx::Effect effect, ofx::PropertySet inArgs, ofx::PropertySet /*outArgs*/) {
    const Properties arguments{inArgs};
    const double time = arguments.real("OfxPropTime");
    const ofx::RectI window = arguments.rect("OfxImageEffectPropRenderWindow");
    if (!arguments.is("OfxImageEffectPropFieldToRender", "OfxFieldNone"))
        Refuse(effect, ofx::unsupported, "interlaced clips cannot be smoothed");

    const nevrel_settings settings = ReadControls(effect, time);
    const Image output(effect, "Output", time);
    if (output.data == nullptr) return ofx::failed;
    const Image source(effect, "Source", time);

    const ofx::RectI visible = Intersection(window, output.bounds);
    if (IsEmpty(visible)) return ofx::ok;
    const ofx::RectI area =
        source.data == nullptr ? ofx::RectI{} : Intersection(visible, source.bounds);
    if (!Equal(visible, area)) Clear(output, visible);
    if (!IsEmpty(area)) SmoothIfAble(effect, settings, source, output, area);
    return ofx::ok;
}
