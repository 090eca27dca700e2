// The caller's images: whether they can be smoothed, and their rows.
#pragma once

#include <cstddef>
#include <cstdint>

#include "capi/layouts.h"
#include "nevrel.h"

/// The rows of an image, the caller's or one of our own.
struct ImageRows {
    std::byte* first;
    std::ptrdiff_t pitch;

    /// Of a single row the caller's pitch may be anything, and is not calculated with.
    ImageRows(const nevrel_image& image, int height)
        : first(static_cast<std::byte*>(image.pixels)), pitch(height == 1 ? 0 : image.row_bytes) {}
    ImageRows(std::byte* tight, std::ptrdiff_t rowBytes) : first(tight), pitch(rowBytes) {}

    [[nodiscard]] std::byte* row(int y) const { return first + y * pitch; }
};

/// Whether two images, each right in itself, are one and the same.
[[nodiscard]] bool AreSame(const nevrel_image& a, const nevrel_image& b, int height) noexcept;

/// NEVREL_OK when the images can be reached and are the same or share no memory, otherwise what is
/// wrong. Neither pointer to an image is null.
[[nodiscard]] nevrel_status CheckImages(const Layout& layout, int width, int height,
                                        const nevrel_image& input,
                                        const nevrel_image& output) noexcept;
