#include "command/pictures/deflate.h"

#include <array>
#include <cstddef>
#include <new>

namespace nevrel {
namespace {

template <typename Owner>
Owner Required(Owner owner) {
    if (!owner) throw std::bad_alloc();
    return owner;
}

}  // namespace

Compressor NewCompressor(int level) {
    constexpr std::array levels{0, 1, 2, 3, 4, 5, 7, 8, 9, 11};
    return Required(
        Compressor(libdeflate_alloc_compressor(levels.at(static_cast<std::size_t>(level)))));
}

Decompressor NewDecompressor() { return Required(Decompressor(libdeflate_alloc_decompressor())); }

}  // namespace nevrel
