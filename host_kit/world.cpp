#include "host_kit/world.h"

#ifdef __linux__
#include <sys/mman.h>
#endif

#include <array>
#include <cassert>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>
#include <utility>

namespace host_kit {
namespace {

constexpr std::size_t guardBytes = 2048;
constexpr std::align_val_t alignment{64};

std::byte Noise(std::size_t index, std::uint32_t seed) {
    const std::uint64_t mixed = (static_cast<std::uint64_t>(index) + seed) * 0x9E3779B97F4A7C15U;
    return static_cast<std::byte>((mixed ^ mixed >> 29) >> 32);
}

/// Asks for huge pages within a large block: mapping millions of bytes in small ones takes longer
/// than the effect works on them.
void PreferHugePages([[maybe_unused]] std::byte* block, [[maybe_unused]] std::size_t size) {
#ifdef __linux__
    constexpr std::size_t hugePage = std::size_t{2} << 20;
    void* first = block;
    std::size_t rest = size;
    if (std::align(hugePage, hugePage, first, rest) != nullptr)
        static_cast<void>(madvise(first, rest / hugePage * hugePage, MADV_HUGEPAGE));
#endif
}

std::byte* NewBlock(std::size_t size) {
    auto* block = static_cast<std::byte*>(::operator new[](size, alignment));
    PreferHugePages(block, size);
    return block;
}
void FreeBlock(std::byte* block) { ::operator delete[](block, alignment); }

/// Blocks that a thread's images gave back. The frames of a sequence are alike, so the next one
/// takes them again: that spares the system the work of mapping fresh pages for each frame, and
/// memory that an allocator would hold on to between blocks of that size.
class KeptBlocks {
  public:
    KeptBlocks() = default;
    ~KeptBlocks() {
        for (const Block& block : blocks_) FreeBlock(block.memory);
    }
    KeptBlocks(const KeptBlocks&) = delete;
    KeptBlocks& operator=(const KeptBlocks&) = delete;

    /// A kept block of exactly this size; null when there is none.
    [[nodiscard]] std::byte* take(std::size_t size) {
        for (Block& block : blocks_) {
            if (block.size == size) return std::exchange(block, {}).memory;
        }
        return nullptr;
    }

    /// Keeps a block in place of the one that has been kept the longest.
    void keep(std::byte* memory, std::size_t size) {
        FreeBlock(std::exchange(blocks_[next_], {memory, size}).memory);
        next_ = (next_ + 1) % blocks_.size();
    }

  private:
    struct Block {
        std::byte* memory = nullptr;
        std::size_t size = 0;
    };

    std::array<Block, 3> blocks_;  // an input, an output and the effect's scratch image
    std::size_t next_ = 0;
};

thread_local KeptBlocks keptBlocks;

}  // namespace

int PixelBytes(PF_PixelFormat format) {
    if (format == PF_PixelFormat_ARGB32) return sizeof(PF_Pixel);
    if (format == PF_PixelFormat_ARGB64) return sizeof(PF_Pixel16);
    assert(format == PF_PixelFormat_ARGB128);
    return sizeof(PF_PixelFloat);
}

void World::GiveBack::operator()(std::byte* block) const {
    if (pooledSize == 0) {
        FreeBlock(block);
    } else {
        keptBlocks.keep(block, pooledSize);
    }
}

World::World(PF_PixelFormat format, A_long width, A_long height, const MemoryStyle& style)
    : format_(format), style_(style) {
    assert(width > 0 && height > 0 && style.padding >= 0 && style.misalignment >= 0);
    const std::int64_t rowBytes = std::int64_t{width} * PixelBytes(format);
    const std::int64_t pitch = rowBytes + style.padding;
    if (pitch > std::numeric_limits<A_long>::max()) throw std::bad_alloc();
    const std::size_t lead =
        static_cast<std::size_t>(style.misalignment) + (style.guarded ? guardBytes : 0);
    const auto toLastRow = static_cast<std::size_t>(pitch) * static_cast<std::size_t>(height - 1);
    size_ =
        lead + toLastRow + static_cast<std::size_t>(rowBytes) + (style.guarded ? guardBytes : 0);
    std::byte* kept = style.pooled ? keptBlocks.take(size_) : nullptr;
    block_ = {kept != nullptr ? kept : NewBlock(size_), GiveBack{style.pooled ? size_ : 0}};
    if (style.guarded) {
        for (std::size_t i = 0; i < size_; ++i) block_[i] = Noise(i, style_.seed);
    }
    record_.platform_ref = this;
    record_.width = width;
    record_.height = height;
    record_.extent_hint = {0, 0, width, height};
    record_.pix_aspect_ratio = {1, 1};
    record_.rowbytes = static_cast<A_long>(style.bottomUp ? -pitch : pitch);
    record_.data = block_.get() + lead + (style.bottomUp ? toLastRow : 0);
}

PF_EffectWorld World::part(const PF_LRect& rect) const {
    assert(0 <= rect.left && rect.left < rect.right && rect.right <= width());
    assert(0 <= rect.top && rect.top < rect.bottom && rect.bottom <= height());
    PF_EffectWorld record = record_;
    record.data = rowBytes(rect.top) + std::ptrdiff_t{rect.left} * PixelBytes(format_);
    record.width = rect.right - rect.left;
    record.height = rect.bottom - rect.top;
    record.extent_hint = {0, 0, record.width, record.height};
    record.origin_x = -rect.left;
    record.origin_y = -rect.top;
    return record;
}

std::byte* World::rowBytes(A_long y) const {
    assert(0 <= y && y < height());
    return static_cast<std::byte*>(record_.data) + std::ptrdiff_t{y} * record_.rowbytes;
}

bool World::noiseAt(std::size_t begin, std::size_t end) const {
    for (std::size_t i = begin; i < end; ++i) {
        if (block_[i] != Noise(i, style_.seed)) return false;
    }
    return true;
}

bool World::guardsIntact() const {
    if (!style_.guarded) return true;
    const auto rowLength =
        static_cast<std::size_t>(width()) * static_cast<std::size_t>(PixelBytes(format_));
    std::size_t clearFrom = 0;
    for (A_long i = 0; i < height(); ++i) {
        const A_long y = style_.bottomUp ? height() - 1 - i : i;
        const auto rowStart = static_cast<std::size_t>(rowBytes(y) - block_.get());
        if (!noiseAt(clearFrom, rowStart)) return false;
        clearFrom = rowStart + rowLength;
    }
    return noiseAt(clearFrom, size_);
}

std::uint64_t World::checksum() const {
    std::uint64_t sum = 0xCBF29CE484222325U;
    for (std::size_t i = 0; i < size_; ++i)
        sum = (sum ^ static_cast<std::uint64_t>(block_[i])) * 0x100000001B3U;
    return sum;
}

}  // namespace host_kit
