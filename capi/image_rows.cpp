#include "capi/image_rows.h"

#include <utility>

namespace {

/// Where an image lies, as plain numbers: whatever the caller hands in can be compared.
struct Extent {
    std::uint64_t first;     ///< address of the lowest row
    std::uint64_t rowBytes;  ///< that hold pixels
    std::uint64_t stride;    ///< from a row to the next higher one
    std::uint64_t bytes;     ///< from the first pixel to the last one's end
};

std::uint64_t Magnitude(std::ptrdiff_t value) {
    const auto bits = static_cast<std::uint64_t>(std::int64_t{value});
    return value < 0 ? 0 - bits : bits;
}

nevrel_status FindExtent(const Layout& layout, int width, int height, const nevrel_image& image,
                         Extent& extent) {
    const auto sample = static_cast<std::uint64_t>(layout.sampleBytes);
    const auto address = reinterpret_cast<std::uintptr_t>(image.pixels);
    const auto gaps = static_cast<std::uint64_t>(height) - 1;
    extent.rowBytes =
        static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(layout.pixelBytes);
    extent.stride = gaps == 0 ? extent.rowBytes : Magnitude(image.row_bytes);
    if (extent.stride < extent.rowBytes || extent.stride % sample != 0 || address % sample != 0)
        return NEVREL_BAD_STRIDE;

    constexpr std::uint64_t most = PTRDIFF_MAX;
    if (extent.rowBytes > most || (gaps != 0 && extent.stride > (most - extent.rowBytes) / gaps))
        return NEVREL_BAD_SIZE;
    const std::uint64_t above = gaps * extent.stride;
    extent.bytes = above + extent.rowBytes;
    const bool upwards = gaps != 0 && image.row_bytes < 0;
    if (upwards && above > address) return NEVREL_BAD_SIZE;
    extent.first = upwards ? address - above : address;
    return extent.bytes > UINTPTR_MAX - extent.first ? NEVREL_BAD_SIZE : NEVREL_OK;
}

/// Whether the rows of one lie in the gaps between the rows of the other, like two halves of a
/// wider image.
bool Interleave(const Extent& a, const Extent& b) {
    if (a.stride != b.stride) return false;
    const std::uint64_t distance = a.first < b.first ? b.first - a.first : a.first - b.first;
    const std::uint64_t shift = distance % a.stride;
    return shift >= a.rowBytes && shift <= a.stride - a.rowBytes;
}

bool ShareMemory(const Extent& a, const Extent& b) {
    const bool apart = a.first + a.bytes <= b.first || b.first + b.bytes <= a.first;
    return !apart && !Interleave(a, b);
}

}  // namespace

bool AreSame(const nevrel_image& a, const nevrel_image& b, int height) noexcept {
    return a.pixels == b.pixels && (height == 1 || a.row_bytes == b.row_bytes);
}

nevrel_status CheckImages(const Layout& layout, int width, int height, const nevrel_image& input,
                          const nevrel_image& output) noexcept {
    const auto outside = [](int side) { return side < 1 || side > NEVREL_LARGEST_SIDE; };
    if (outside(width) || outside(height)) return NEVREL_BAD_SIZE;
    Extent from{};
    Extent to{};
    for (const auto& [image, extent] : {std::pair{&input, &from}, std::pair{&output, &to}}) {
        const nevrel_status status = FindExtent(layout, width, height, *image, *extent);
        if (status != NEVREL_OK) return status;
    }
    const bool right = AreSame(input, output, height) || !ShareMemory(from, to);
    return right ? NEVREL_OK : NEVREL_OVERLAP;
}
