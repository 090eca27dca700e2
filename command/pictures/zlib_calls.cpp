#include "command/pictures/zlib_calls.h"

#include <zlib.h>

#include <new>

#include "command/pictures/deflate.h"

namespace nevrel {
namespace {

thread_local std::size_t inflateFailures = 0;

}  // namespace

std::size_t InflateFailures() { return inflateFailures; }

}  // namespace nevrel

using nevrel::inflateFailures;

#define EXPORTED [[gnu::visibility("default")]]

extern "C" {

EXPORTED int compress2(Bytef* to, uLongf* toSize, const Bytef* from, uLong fromSize,
                       int level) try {
    constexpr int usualLevel = 6, storedLevel = 0;
    if (level == Z_DEFAULT_COMPRESSION) level = usualLevel;
    if (level < Z_NO_COMPRESSION || level > Z_BEST_COMPRESSION) return Z_STREAM_ERROR;
    const uLongf room = *toSize;
    const auto compress = [&](int at) {
        return libdeflate_zlib_compress(nevrel::NewCompressor(at).get(), from, fromSize, to, room);
    };
    *toSize = compress(level);
    // Stored, any data fits into what compressBound() promises, which is less than libdeflate's own
    // bound.
    if (*toSize == 0) *toSize = compress(storedLevel);
    return *toSize == 0 ? Z_BUF_ERROR : Z_OK;
} catch (const std::bad_alloc&) {
    return Z_MEM_ERROR;
}

EXPORTED int compress(Bytef* to, uLongf* toSize, const Bytef* from, uLong fromSize) {
    return compress2(to, toSize, from, fromSize, Z_DEFAULT_COMPRESSION);
}

EXPORTED int uncompress(Bytef* to, uLongf* toSize, const Bytef* from, uLong fromSize) try {
    const uLongf room = *toSize;
    const auto result = libdeflate_zlib_decompress(nevrel::NewDecompressor().get(), from, fromSize,
                                                   to, room, toSize);
    if (result == LIBDEFLATE_SUCCESS) return Z_OK;
    ++inflateFailures;
    return result == LIBDEFLATE_INSUFFICIENT_SPACE ? Z_BUF_ERROR : Z_DATA_ERROR;
} catch (const std::bad_alloc&) {
    ++inflateFailures;
    return Z_MEM_ERROR;
}

}  // extern "C"
