// Thin names for the vector instructions of one set, so that the vector forms are written once.
//
// Everything here has internal linkage: the files that include it are compiled for different
// processors, and the linker must never take one's code for another's.
#pragma once

#include <emmintrin.h>
#ifdef __AVX2__
#include <immintrin.h>
#endif

#include <cstddef>
#include <cstdint>

namespace {

/// 16 bytes at a time.
struct Sse2 {
    using Vector = __m128i;
    using Floats = __m128;
    static constexpr int bytes = 16;

    static Vector load(const void* p) { return _mm_loadu_si128(static_cast<const __m128i*>(p)); }
    static void store(void* p, Vector v) { _mm_storeu_si128(static_cast<__m128i*>(p), v); }
    static void prefetch(const void* p) { _mm_prefetch(static_cast<const char*>(p), _MM_HINT_T0); }
    static Vector zero() { return _mm_setzero_si128(); }
    static Vector fill(std::int32_t v) { return _mm_set1_epi32(v); }
    static Vector fill64(std::uint64_t v) { return _mm_set1_epi64x(static_cast<long long>(v)); }
    static Vector fill128(const void* p) { return load(p); }
    static bool isZero(Vector v) { return _mm_movemask_epi8(_mm_cmpeq_epi8(v, zero())) == 0xFFFF; }
    static Vector bitAnd(Vector a, Vector b) { return _mm_and_si128(a, b); }
    static Vector bitOr(Vector a, Vector b) { return _mm_or_si128(a, b); }
    static Vector bitXor(Vector a, Vector b) { return _mm_xor_si128(a, b); }
    static Vector without(Vector v, Vector mask) { return _mm_andnot_si128(mask, v); }

    static Vector difference8(Vector a, Vector b) {
        return _mm_or_si128(_mm_subs_epu8(a, b), _mm_subs_epu8(b, a));
    }
    static Vector difference16(Vector a, Vector b) {
        return _mm_or_si128(_mm_subs_epu16(a, b), _mm_subs_epu16(b, a));
    }
    static Vector add16(Vector a, Vector b) { return _mm_add_epi16(a, b); }
    static Vector add32(Vector a, Vector b) { return _mm_add_epi32(a, b); }
    static Vector addPairs16(Vector v) { return _mm_madd_epi16(v, _mm_set1_epi16(1)); }
    static Vector highBytes16(Vector v) { return _mm_srli_epi16(v, 8); }
    static Vector highWords32(Vector v) { return _mm_srli_epi32(v, 16); }
    static Vector highHalves64(Vector v) { return _mm_srli_epi64(v, 32); }
    static Vector shiftLeft64(Vector v, int count) { return _mm_slli_epi64(v, count); }
    static Vector shiftRight64(Vector v, int count) { return _mm_srli_epi64(v, count); }
    static Vector equal16(Vector a, Vector b) { return _mm_cmpeq_epi16(a, b); }
    static Vector equal32(Vector a, Vector b) { return _mm_cmpeq_epi32(a, b); }
    static Vector greater32(Vector a, Vector b) { return _mm_cmpgt_epi32(a, b); }

    /// The lowest word of each 64-bit lane, in all four words of the lane.
    static Vector repeatLowestWord(Vector v) {
        return _mm_shufflehi_epi16(_mm_shufflelo_epi16(v, 0), 0);
    }
    /// The low halves of the 64-bit lanes of a and then of b, in memory order.
    static Vector lowHalves(Vector a, Vector b) {
        return _mm_castps_si128(
            _mm_shuffle_ps(_mm_castsi128_ps(a), _mm_castsi128_ps(b), _MM_SHUFFLE(2, 0, 2, 0)));
    }
    /// The sign bits of the 32-bit lanes.
    static std::uint32_t signs(Vector v) {
        return static_cast<std::uint32_t>(_mm_movemask_ps(_mm_castsi128_ps(v)));
    }
    /// Bit i is set where byte i is not zero.
    static std::uint64_t nonZeroBytes(Vector v) {
        return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(v, zero()))) ^ 0xFFFF;
    }

    static Floats floats(Vector v) { return _mm_castsi128_ps(v); }
    static Floats fillFloat(float v) { return _mm_set1_ps(v); }
    static Floats add(Floats a, Floats b) { return _mm_add_ps(a, b); }
    static Floats subtract(Floats a, Floats b) { return _mm_sub_ps(a, b); }
    static Floats magnitude(Floats v) { return _mm_andnot_ps(_mm_set1_ps(-0.0F), v); }
    static Vector less(Floats a, Floats b) { return _mm_castps_si128(_mm_cmplt_ps(a, b)); }
    static Vector equal(Floats a, Floats b) { return _mm_castps_si128(_mm_cmpeq_ps(a, b)); }

    /// One channel of each pixel of four floats, in all four.
    template <int channel>
    static Floats spread(Floats v) {
        return _mm_shuffle_ps(v, v, _MM_SHUFFLE(channel, channel, channel, channel));
    }
    /// As many pixels of four floats as a vector has floats, turned into one vector a channel.
    static void loadChannels(const float* p, Floats channel[4]) {
        for (std::ptrdiff_t i = 0; i < 4; ++i) channel[i] = _mm_loadu_ps(p + 4 * i);
        _MM_TRANSPOSE4_PS(channel[0], channel[1], channel[2], channel[3]);
    }
};

#ifdef __AVX2__
/// 32 bytes at a time; the same names as in Sse2.
struct Avx2 {
    using Vector = __m256i;
    using Floats = __m256;
    static constexpr int bytes = 32;

    static Vector load(const void* p) { return _mm256_loadu_si256(static_cast<const __m256i*>(p)); }
    static void store(void* p, Vector v) { _mm256_storeu_si256(static_cast<__m256i*>(p), v); }
    static void prefetch(const void* p) { _mm_prefetch(static_cast<const char*>(p), _MM_HINT_T0); }
    static Vector zero() { return _mm256_setzero_si256(); }
    static Vector fill(std::int32_t v) { return _mm256_set1_epi32(v); }
    static Vector fill64(std::uint64_t v) { return _mm256_set1_epi64x(static_cast<long long>(v)); }
    static Vector fill128(const void* p) { return _mm256_broadcastsi128_si256(Sse2::load(p)); }
    static bool isZero(Vector v) { return _mm256_testz_si256(v, v) != 0; }
    static Vector bitAnd(Vector a, Vector b) { return _mm256_and_si256(a, b); }
    static Vector bitOr(Vector a, Vector b) { return _mm256_or_si256(a, b); }
    static Vector bitXor(Vector a, Vector b) { return _mm256_xor_si256(a, b); }
    static Vector without(Vector v, Vector mask) { return _mm256_andnot_si256(mask, v); }

    static Vector difference8(Vector a, Vector b) {
        return _mm256_or_si256(_mm256_subs_epu8(a, b), _mm256_subs_epu8(b, a));
    }
    static Vector difference16(Vector a, Vector b) {
        return _mm256_or_si256(_mm256_subs_epu16(a, b), _mm256_subs_epu16(b, a));
    }
    static Vector add16(Vector a, Vector b) { return _mm256_add_epi16(a, b); }
    static Vector add32(Vector a, Vector b) { return _mm256_add_epi32(a, b); }
    static Vector addPairs16(Vector v) { return _mm256_madd_epi16(v, _mm256_set1_epi16(1)); }
    static Vector highBytes16(Vector v) { return _mm256_srli_epi16(v, 8); }
    static Vector highWords32(Vector v) { return _mm256_srli_epi32(v, 16); }
    static Vector highHalves64(Vector v) { return _mm256_srli_epi64(v, 32); }
    static Vector shiftLeft64(Vector v, int count) { return _mm256_slli_epi64(v, count); }
    static Vector shiftRight64(Vector v, int count) { return _mm256_srli_epi64(v, count); }
    static Vector equal16(Vector a, Vector b) { return _mm256_cmpeq_epi16(a, b); }
    static Vector equal32(Vector a, Vector b) { return _mm256_cmpeq_epi32(a, b); }
    static Vector greater32(Vector a, Vector b) { return _mm256_cmpgt_epi32(a, b); }

    static Vector repeatLowestWord(Vector v) {
        return _mm256_shufflehi_epi16(_mm256_shufflelo_epi16(v, 0), 0);
    }
    static Vector lowHalves(Vector a, Vector b) {
        const __m256 halves = _mm256_shuffle_ps(_mm256_castsi256_ps(a), _mm256_castsi256_ps(b),
                                                _MM_SHUFFLE(2, 0, 2, 0));
        return _mm256_permute4x64_epi64(_mm256_castps_si256(halves), _MM_SHUFFLE(3, 1, 2, 0));
    }
    static std::uint32_t signs(Vector v) {
        return static_cast<std::uint32_t>(_mm256_movemask_ps(_mm256_castsi256_ps(v)));
    }
    static std::uint64_t nonZeroBytes(Vector v) {
        return ~static_cast<std::uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(v, zero())));
    }

    static Floats floats(Vector v) { return _mm256_castsi256_ps(v); }
    static Floats fillFloat(float v) { return _mm256_set1_ps(v); }
    static Floats add(Floats a, Floats b) { return _mm256_add_ps(a, b); }
    static Floats subtract(Floats a, Floats b) { return _mm256_sub_ps(a, b); }
    static Floats magnitude(Floats v) { return _mm256_andnot_ps(_mm256_set1_ps(-0.0F), v); }
    static Vector less(Floats a, Floats b) {
        return _mm256_castps_si256(_mm256_cmp_ps(a, b, _CMP_LT_OQ));
    }
    static Vector equal(Floats a, Floats b) {
        return _mm256_castps_si256(_mm256_cmp_ps(a, b, _CMP_EQ_OQ));
    }

    template <int channel>
    static Floats spread(Floats v) {
        return _mm256_shuffle_ps(v, v, _MM_SHUFFLE(channel, channel, channel, channel));
    }
    static void loadChannels(const float* p, Floats channel[4]) {
        Floats pixel[4];  // pixel i below pixel i + 4
        for (std::ptrdiff_t i = 0; i < 4; ++i) {
            pixel[i] = _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(p + 4 * i)),
                                            _mm_loadu_ps(p + 4 * (i + 4)), 1);
        }
        const Floats low01 = _mm256_unpacklo_ps(pixel[0], pixel[1]);
        const Floats low23 = _mm256_unpacklo_ps(pixel[2], pixel[3]);
        const Floats high01 = _mm256_unpackhi_ps(pixel[0], pixel[1]);
        const Floats high23 = _mm256_unpackhi_ps(pixel[2], pixel[3]);
        channel[0] = _mm256_shuffle_ps(low01, low23, _MM_SHUFFLE(1, 0, 1, 0));
        channel[1] = _mm256_shuffle_ps(low01, low23, _MM_SHUFFLE(3, 2, 3, 2));
        channel[2] = _mm256_shuffle_ps(high01, high23, _MM_SHUFFLE(1, 0, 1, 0));
        channel[3] = _mm256_shuffle_ps(high01, high23, _MM_SHUFFLE(3, 2, 3, 2));
    }
};
#endif

#ifdef __AVX512BW__
/// 64 bytes at a time; the same names as in Sse2.
struct Avx512 {
    using Vector = __m512i;
    using Floats = __m512;
    static constexpr int bytes = 64;

    static Vector load(const void* p) { return _mm512_loadu_si512(p); }
    static void store(void* p, Vector v) { _mm512_storeu_si512(p, v); }
    static void prefetch(const void* p) { _mm_prefetch(static_cast<const char*>(p), _MM_HINT_T0); }
    static Vector zero() { return _mm512_setzero_si512(); }
    static Vector fill(std::int32_t v) { return _mm512_set1_epi32(v); }
    static Vector fill64(std::uint64_t v) { return _mm512_set1_epi64(static_cast<long long>(v)); }
    static Vector fill128(const void* p) { return _mm512_broadcast_i32x4(Sse2::load(p)); }
    static bool isZero(Vector v) { return _mm512_test_epi32_mask(v, v) == 0; }
    static Vector bitAnd(Vector a, Vector b) { return _mm512_and_si512(a, b); }
    static Vector bitOr(Vector a, Vector b) { return _mm512_or_si512(a, b); }
    static Vector bitXor(Vector a, Vector b) { return _mm512_xor_si512(a, b); }
    static Vector without(Vector v, Vector mask) { return _mm512_andnot_si512(mask, v); }

    static Vector difference8(Vector a, Vector b) {
        return _mm512_or_si512(_mm512_subs_epu8(a, b), _mm512_subs_epu8(b, a));
    }
    static Vector difference16(Vector a, Vector b) {
        return _mm512_or_si512(_mm512_subs_epu16(a, b), _mm512_subs_epu16(b, a));
    }
    static Vector add16(Vector a, Vector b) { return _mm512_add_epi16(a, b); }
    static Vector add32(Vector a, Vector b) { return _mm512_add_epi32(a, b); }
    static Vector addPairs16(Vector v) { return _mm512_madd_epi16(v, _mm512_set1_epi16(1)); }
    static Vector highBytes16(Vector v) { return _mm512_srli_epi16(v, 8); }
    static Vector highWords32(Vector v) { return _mm512_srli_epi32(v, 16); }
    static Vector highHalves64(Vector v) { return _mm512_srli_epi64(v, 32); }
    static Vector shiftLeft64(Vector v, int count) {
        return _mm512_slli_epi64(v, static_cast<unsigned>(count));
    }
    static Vector shiftRight64(Vector v, int count) {
        return _mm512_srli_epi64(v, static_cast<unsigned>(count));
    }
    static Vector equal16(Vector a, Vector b) {
        return _mm512_movm_epi16(_mm512_cmpeq_epi16_mask(a, b));
    }
    static Vector equal32(Vector a, Vector b) {
        return _mm512_movm_epi32(_mm512_cmpeq_epi32_mask(a, b));
    }
    static Vector greater32(Vector a, Vector b) {
        return _mm512_movm_epi32(_mm512_cmpgt_epi32_mask(a, b));
    }

    static Vector repeatLowestWord(Vector v) {
        return _mm512_shufflehi_epi16(_mm512_shufflelo_epi16(v, 0), 0);
    }
    static Vector lowHalves(Vector a, Vector b) {
        const __m512 halves = _mm512_shuffle_ps(_mm512_castsi512_ps(a), _mm512_castsi512_ps(b),
                                                _MM_SHUFFLE(2, 0, 2, 0));
        const __m512i places = _mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7);
        return _mm512_permutexvar_epi64(places, _mm512_castps_si512(halves));
    }
    static std::uint32_t signs(Vector v) { return _mm512_movepi32_mask(v); }
    static std::uint64_t nonZeroBytes(Vector v) { return _mm512_test_epi8_mask(v, v); }

    static Floats floats(Vector v) { return _mm512_castsi512_ps(v); }
    static Floats fillFloat(float v) { return _mm512_set1_ps(v); }
    static Floats add(Floats a, Floats b) { return _mm512_add_ps(a, b); }
    static Floats subtract(Floats a, Floats b) { return _mm512_sub_ps(a, b); }
    static Floats magnitude(Floats v) { return _mm512_andnot_ps(_mm512_set1_ps(-0.0F), v); }
    static Vector less(Floats a, Floats b) {
        return _mm512_movm_epi32(_mm512_cmp_ps_mask(a, b, _CMP_LT_OQ));
    }
    static Vector equal(Floats a, Floats b) {
        return _mm512_movm_epi32(_mm512_cmp_ps_mask(a, b, _CMP_EQ_OQ));
    }

    template <int channel>
    static Floats spread(Floats v) {
        return _mm512_shuffle_ps(v, v, _MM_SHUFFLE(channel, channel, channel, channel));
    }
    static void loadChannels(const float* p, Floats channel[4]) {
        const __m512i alphaRed =
            _mm512_setr_epi32(0, 4, 8, 12, 16, 20, 24, 28, 1, 5, 9, 13, 17, 21, 25, 29);
        const __m512i greenBlue = _mm512_add_epi32(alphaRed, _mm512_set1_epi32(2));
        Floats pixels[4];  // four each
        for (std::ptrdiff_t i = 0; i < 4; ++i) pixels[i] = _mm512_loadu_ps(p + 16 * i);
        const Floats ar0 = _mm512_permutex2var_ps(pixels[0], alphaRed, pixels[1]);
        const Floats ar8 = _mm512_permutex2var_ps(pixels[2], alphaRed, pixels[3]);
        const Floats gb0 = _mm512_permutex2var_ps(pixels[0], greenBlue, pixels[1]);
        const Floats gb8 = _mm512_permutex2var_ps(pixels[2], greenBlue, pixels[3]);
        channel[0] = _mm512_shuffle_f32x4(ar0, ar8, _MM_SHUFFLE(1, 0, 1, 0));
        channel[1] = _mm512_shuffle_f32x4(ar0, ar8, _MM_SHUFFLE(3, 2, 3, 2));
        channel[2] = _mm512_shuffle_f32x4(gb0, gb8, _MM_SHUFFLE(1, 0, 1, 0));
        channel[3] = _mm512_shuffle_f32x4(gb0, gb8, _MM_SHUFFLE(3, 2, 3, 2));
    }
};
#endif

}  // namespace
