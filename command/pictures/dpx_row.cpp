#include "command/pictures/dpx_row.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <vector>

namespace nevrel {

DpxRow::DpxRow(ByteOrder order, unsigned bits, DpxPacking packing, std::size_t width,
               std::size_t channels)
    : order_(order),
      bits_(bits),
      packing_(packing),
      lowestFirst_(channels == 1),
      samples_(width * channels) {
    assert(bits == 8 || bits == 10 || bits == 12 || bits == 16);
}

std::size_t DpxRow::wordCount() const {
    if (!sharesWords()) return samples_;
    return packing_ == DpxPacking::Packed ? (samples_ * bits_ + 31) / 32 : (samples_ + 2) / 3;
}

std::uint64_t DpxRow::bytes() const { return bits_ == 8 ? samples_ : wordCount() * wordBytes(); }

DpxRow::Place DpxRow::place(std::size_t sample) const {
    const bool high = packing_ == DpxPacking::FilledHigh;
    if (!sharesWords()) return {sample, high ? 16 - bits_ : 0};
    if (packing_ == DpxPacking::Packed)
        return {sample * bits_ / 32, static_cast<unsigned>(sample * bits_ % 32)};
    const auto third = static_cast<unsigned>(sample % 3);
    return {sample / 3, (lowestFirst_ ? third : 2 - third) * bits_ + (high ? 2 : 0)};
}

void DpxRow::unpack(std::span<const std::byte> row, std::byte* samples) const {
    if (bits_ == 8) {
        std::copy_n(row.begin(), samples_, samples);
        return;
    }
    std::vector<std::uint64_t> words(wordCount() + 1);  // a sample may run into the next one
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
        words[i] = Number(row.subspan(i * wordBytes(), wordBytes()), order_);
    for (std::size_t i = 0; i < samples_; ++i) {
        const auto [word, shift] = place(i);
        const std::uint64_t bits = (words[word] | words[word + 1] << 32) >> shift;
        const std::uint64_t value = bits & ((1U << bits_) - 1);
        const auto sample =
            static_cast<std::uint16_t>(value << (16 - bits_) | value >> (2 * bits_ - 16));
        std::memcpy(samples + i * sizeof sample, &sample, sizeof sample);
    }
}

void DpxRow::pack(const std::byte* samples, std::span<std::byte> row) const {
    if (bits_ == 8) {
        std::copy_n(samples, samples_, row.begin());
        return;
    }
    std::vector<std::uint64_t> words(wordCount() + 1);  // a sample may run into the next one
    for (std::size_t i = 0; i < samples_; ++i) {
        std::uint16_t sample = 0;
        std::memcpy(&sample, samples + i * sizeof sample, sizeof sample);
        const auto [word, shift] = place(i);
        const std::uint64_t bits = static_cast<std::uint64_t>(sample >> (16 - bits_)) << shift;
        words[word] |= bits;
        words[word + 1] |= bits >> 32;
    }
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
        PutNumber(words[i], row.subspan(i * wordBytes(), wordBytes()), order_);
}

}  // namespace nevrel
