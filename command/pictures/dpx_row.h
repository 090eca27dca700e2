// Rows of samples as DPX files hold them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "command/pictures/file_numbers.h"

namespace nevrel {

/// What lies beside samples that do not fill a word; numbers as in the file's header.
enum class DpxPacking { Packed = 0, FilledHigh = 1, FilledLow = 2 };

/// How the samples of one row lie in its bytes. 10-bit and 12-bit samples stand for 16-bit ones
/// whose lowest bits repeat the highest.
class DpxRow {
  public:
    /// `channels` samples of `bits` (8, 10, 12 or 16) for each of `width` pixels.
    DpxRow(ByteOrder order, unsigned bits, DpxPacking packing, std::size_t width,
           std::size_t channels);

    /// Size of the samples, without padding behind them.
    [[nodiscard]] std::uint64_t bytes() const;
    [[nodiscard]] std::uint64_t paddedBytes() const { return (bytes() + 3) / 4 * 4; }

    /// Between the bytes of a row and its samples back to back, 8-bit or native 16-bit ones.
    void unpack(std::span<const std::byte> row, std::byte* samples) const;
    void pack(const std::byte* samples, std::span<std::byte> row) const;

  private:
    struct Place {
        std::size_t word;
        unsigned shift;
    };
    [[nodiscard]] bool sharesWords() const { return bits_ == 10 || isPacked12(); }
    [[nodiscard]] bool isPacked12() const { return bits_ == 12 && packing_ == DpxPacking::Packed; }
    [[nodiscard]] std::size_t wordBytes() const { return sharesWords() ? 4 : 2; }
    [[nodiscard]] std::size_t wordCount() const;
    [[nodiscard]] Place place(std::size_t sample) const;

    ByteOrder order_;
    unsigned bits_;
    DpxPacking packing_;
    bool lowestFirst_;  ///< the first of three filled samples lies in the word's lowest bits
    std::size_t samples_;
};

}  // namespace nevrel
