// Rows of pixels as PNG files hold them before compression.
#pragma once

#include <cstddef>
#include <memory>
#include <span>

namespace nevrel {

/// Rows without gaps, 16-bit samples in the machine's own order.
struct PngRows {
    std::span<const std::byte> bytes;
    std::size_t count;
    std::size_t pixelBytes;  ///< 1 for pixels that share bytes
    bool isWide;             ///< of 16-bit samples

    [[nodiscard]] std::size_t rowBytes() const { return bytes.size() / count; }
    /// Size of the rows, each with the number of its filter before it.
    [[nodiscard]] std::size_t filteredSize() const { return bytes.size() + count; }
};

/// The rows, each with its filter's number before it: as they are, or as differences from
/// neighbouring pixels by the filter that leaves the smallest ones. Throws std::bad_alloc.
[[nodiscard]] std::unique_ptr<std::byte[]> FilterRows(const PngRows& rows, bool takesDifferences);

}  // namespace nevrel
