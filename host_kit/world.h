// Images as the host lends them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "sdk/effect_api.h"

namespace host_kit {

/// Bytes of one pixel: 4, 8 or 16.
[[nodiscard]] int PixelBytes(PF_PixelFormat format);

/// How an image lies in memory. The default is tight: the block ends with the last pixel of the
/// last row.
struct MemoryStyle {
    A_long padding =
        0;  ///< bytes between the end of a row and the next one, a multiple of a channel's
    A_long misalignment =
        0;  ///< bytes past a 64-byte boundary at which the pixels start, a multiple likewise
    bool bottomUp = false;  ///< the top row lies last in memory, so the row pitch is negative
    bool guarded =
        false;  ///< bands around the pixels, and everything filled with noise to begin with
    std::uint32_t seed = 0;  ///< of that noise
    bool pooled = false;     ///< in memory that an image of this size gave back on this thread
};

/// An image that the host owns; pixel contents start undefined (noise when guarded).
class World {
  public:
    /// Throws std::bad_alloc when there is no memory or the row pitch would pass 31 bits.
    World(PF_PixelFormat format, A_long width, A_long height, const MemoryStyle& style = {});
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    [[nodiscard]] PF_PixelFormat format() const { return format_; }
    [[nodiscard]] A_long width() const { return record_.width; }
    [[nodiscard]] A_long height() const { return record_.height; }
    /// The host's record of the image; its `platform_ref` leads back to this object.
    [[nodiscard]] PF_EffectWorld& record() { return record_; }
    [[nodiscard]] const PF_EffectWorld& record() const { return record_; }
    /// A record of a part of the image, which shares its memory. The part lies within the image.
    [[nodiscard]] PF_EffectWorld part(const PF_LRect& rect) const;

    /// First pixel of row y.
    template <typename Pixel>
    [[nodiscard]] Pixel* row(A_long y) {
        return reinterpret_cast<Pixel*>(rowBytes(y));
    }
    template <typename Pixel>
    [[nodiscard]] const Pixel* row(A_long y) const {
        return reinterpret_cast<const Pixel*>(rowBytes(y));
    }

    /// False when a byte of the padding or of a guard band was written. Always true without guards.
    [[nodiscard]] bool guardsIntact() const;
    /// A checksum over the whole memory block, padding and guards included.
    [[nodiscard]] std::uint64_t checksum() const;

  private:
    /// Frees a block, or keeps it for the next image of its size.
    struct GiveBack {
        std::size_t pooledSize;  ///< 0 for a block that is freed

        void operator()(std::byte* block) const;
    };

    [[nodiscard]] std::byte* rowBytes(A_long y) const;
    [[nodiscard]] bool noiseAt(std::size_t begin, std::size_t end) const;

    PF_PixelFormat format_;
    MemoryStyle style_;
    std::size_t size_ = 0;
    std::unique_ptr<std::byte[], GiveBack> block_{nullptr, GiveBack{0}};
    PF_EffectWorld record_{};
};

}  // namespace host_kit
