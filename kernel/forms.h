// The stages of a kernel that exist in several forms, and the choice among them.
#pragma once

#include <cstdint>
#include <span>
#include <tuple>
#include <type_traits>

#include "kernel/blend/image_pair.h"
#include "kernel/edges/edge_scan.h"
#include "kernel/pass/windows.h"
#include "kernel/pixels/color_key.h"
#include "kernel/pixels/pixel.h"

/// The forms for one pixel type; null where there is none but the plain one.
template <typename Pixel>
struct PixelForms {
    using Weight = std::conditional_t<std::is_same_v<Pixel, PixelFloat>, float, std::int32_t>;

    ScanRow<Pixel>* scanRow = nullptr;
    MarkPixels<Pixel>* markPixels = nullptr;
    BlendAcross<Pixel, Weight>* blendAcross = nullptr;
};

/// The forms for one instruction set. All give the same bytes; they differ in the time they take.
struct Forms {
    const char* name;
    FindWindows* findWindows;
    std::tuple<PixelForms<Pixel8>, PixelForms<Pixel16>, PixelForms<PixelFloat>> byPixel;

    template <typename Pixel>
    [[nodiscard]] const PixelForms<Pixel>& of() const {
        return std::get<PixelForms<Pixel>>(byPixel);
    }
};

/// Those that this processor can run: first the plain ones, which are the definition of the
/// results, last the fastest.
[[nodiscard]] std::span<const Forms* const> UsableForms() noexcept;

[[nodiscard]] inline const Forms& FastestForms() noexcept { return *UsableForms().back(); }
