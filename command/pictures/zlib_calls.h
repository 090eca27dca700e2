// zlib's calls for whole buffers, answered by libdeflate. The picture library and OpenEXR make them
// for blocks of EXR and TIFF files, in which half of their time went into zlib; the dynamic linker
// looks into the program before it looks into zlib.
#pragma once

#include <cstddef>

namespace nevrel {

/// How many calls of uncompress() have failed on this thread. Not every reader minds.
[[nodiscard]] std::size_t InflateFailures();

}  // namespace nevrel
