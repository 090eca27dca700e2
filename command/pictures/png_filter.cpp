#include "command/pictures/png_filter.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

namespace nevrel {
namespace {

using Byte = std::uint8_t;

/// Copies a row in the order of the file, highest byte first.
void CopyRow(const PngRows& rows, std::size_t index, Byte* to) {
    const std::size_t size = rows.rowBytes();
    const std::byte* from = rows.bytes.data() + index * size;
    if (!rows.isWide) {
        std::memcpy(to, from, size);
        return;
    }
    for (std::size_t i = 0; i < size; i += 2) {
        std::uint16_t sample = 0;
        std::memcpy(&sample, from + i, sizeof sample);
        to[i] = static_cast<Byte>(sample >> 8);
        to[i + 1] = static_cast<Byte>(sample);
    }
}

int Paeth(int left, int above, int corner) {
    const int toLeft = std::abs(above - corner), toAbove = std::abs(left - corner),
              toCorner = std::abs(left + above - 2 * corner);
    const int nearer = toLeft <= toAbove ? left : above;
    return std::min(toLeft, toAbove) <= toCorner ? nearer : corner;
}

/// A row in the making. What lies left of rows and above the first one counts as 0.
class Row {
  public:
    explicit Row(const PngRows& rows)
        : size_(rows.rowBytes()),
          reach_(rows.pixelBytes),
          current_(reach_ + size_),
          above_(reach_ + size_),
          tried_(size_) {}

    [[nodiscard]] Byte* next() {
        std::swap(current_, above_);
        return current_.data() + reach_;
    }

    /// Writes the number of the best filter and what it makes of the row.
    void filter(Byte* to) {
        std::uint64_t least = UINT64_MAX;
        attempt(0, least, to, [](int value, int, int, int) { return value; });
        attempt(1, least, to, [](int value, int left, int, int) { return value - left; });
        attempt(2, least, to, [](int value, int, int above, int) { return value - above; });
        attempt(3, least, to,
                [](int value, int left, int above, int) { return value - (left + above) / 2; });
        attempt(4, least, to, [](int value, int left, int above, int corner) {
            return value - Paeth(left, above, corner);
        });
    }

  private:
    /// Takes a filter's row where it is the one nearest to 0.
    template <typename Filter>
    void attempt(Byte number, std::uint64_t& least, Byte* to, Filter&& filter) {
        const Byte* const left = current_.data();
        const Byte* const value = left + reach_;
        const Byte* const corner = above_.data();
        const Byte* const above = corner + reach_;
        Byte* const result = tried_.data();
        for (std::size_t i = 0; i < size_; ++i)
            result[i] = static_cast<Byte>(filter(value[i], left[i], above[i], corner[i]));
        std::uint64_t sum = 0;
        for (std::size_t i = 0; i < size_; ++i) sum += std::min<Byte>(result[i], -result[i] & 0xFF);
        if (sum >= least) return;
        least = sum;
        *to = number;
        std::copy_n(result, size_, to + 1);
    }

    std::size_t size_, reach_;
    std::vector<Byte> current_, above_, tried_;
};

}  // namespace

std::unique_ptr<std::byte[]> FilterRows(const PngRows& rows, bool takesDifferences) {
    auto filtered = std::make_unique_for_overwrite<std::byte[]>(rows.filteredSize());
    auto* to = reinterpret_cast<Byte*>(filtered.get());
    Row row(rows);
    for (std::size_t i = 0; i < rows.count; ++i, to += rows.rowBytes() + 1) {
        if (takesDifferences) {
            CopyRow(rows, i, row.next());
            row.filter(to);
        } else {
            *to = 0;
            CopyRow(rows, i, to + 1);
        }
    }
    return filtered;
}

}  // namespace nevrel
