// The blends across a piece, eight pixels at once.
#include <emmintrin.h>

#include <cstring>
#include <type_traits>

#include "kernel/x64/x64_forms.h"

namespace {

/// Four pixels in 16-bit channels, two in each vector.
struct FourPixels {
    __m128i first;
    __m128i last;
};

/// From pixels that lie `step` bytes apart.
template <typename Pixel>
FourPixels LoadFour(const std::byte* at, std::ptrdiff_t step) noexcept {
    if constexpr (std::is_same_v<Pixel, Pixel8>) {
        std::int32_t pixel[4];
        for (int i = 0; i < 4; ++i) std::memcpy(&pixel[i], at + i * step, sizeof pixel[i]);
        const __m128i bytes = _mm_setr_epi32(pixel[0], pixel[1], pixel[2], pixel[3]);
        return {_mm_unpacklo_epi8(bytes, _mm_setzero_si128()),
                _mm_unpackhi_epi8(bytes, _mm_setzero_si128())};
    } else {
        const auto load = [at, step](int i) {
            return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(at + i * step));
        };
        return {_mm_unpacklo_epi64(load(0), load(1)), _mm_unpacklo_epi64(load(2), load(3))};
    }
}

template <typename Pixel>
void StoreFour(std::byte* at, std::ptrdiff_t step, const FourPixels& pixels) noexcept {
    if constexpr (std::is_same_v<Pixel, Pixel8>) {
        const __m128i bytes = _mm_packus_epi16(pixels.first, pixels.last);
        const std::int32_t pixel[4] = {_mm_cvtsi128_si32(bytes),
                                       _mm_cvtsi128_si32(_mm_shuffle_epi32(bytes, 0x55)),
                                       _mm_cvtsi128_si32(_mm_shuffle_epi32(bytes, 0xAA)),
                                       _mm_cvtsi128_si32(_mm_shuffle_epi32(bytes, 0xFF))};
        for (int i = 0; i < 4; ++i) std::memcpy(at + i * step, &pixel[i], sizeof pixel[i]);
    } else {
        const auto store = [at, step](int i, __m128i pixel) {
            _mm_storel_epi64(reinterpret_cast<__m128i*>(at + i * step), pixel);
        };
        store(0, pixels.first);
        store(1, _mm_unpackhi_epi64(pixels.first, pixels.first));
        store(2, pixels.last);
        store(3, _mm_unpackhi_epi64(pixels.last, pixels.last));
    }
}

/// (s * w + d * (65535 - w) + 32768) / 65536 in each channel, modulo 2^32. The quotients are taken
/// as signed, so that packing them, which saturates, keeps their 16 bits.
__m128i MixChannels(__m128i s, __m128i d, __m128i w) noexcept {
    const __m128i rest = _mm_xor_si128(w, _mm_set1_epi32(-1));
    const __m128i sLow = _mm_mullo_epi16(s, w);
    const __m128i sHigh = _mm_mulhi_epu16(s, w);
    const __m128i dLow = _mm_mullo_epi16(d, rest);
    const __m128i dHigh = _mm_mulhi_epu16(d, rest);
    const auto quotients = [](__m128i a, __m128i b) {
        return _mm_srai_epi32(_mm_add_epi32(_mm_add_epi32(a, b), _mm_set1_epi32(32768)), 16);
    };
    return _mm_packs_epi32(
        quotients(_mm_unpacklo_epi16(sLow, sHigh), _mm_unpacklo_epi16(dLow, dHigh)),
        quotients(_mm_unpackhi_epi16(sLow, sHigh), _mm_unpackhi_epi16(dLow, dHigh)));
}

template <typename Pixel>
bool Blend(std::byte* at, std::ptrdiff_t step, const Pixel& back, const Pixel& on,
           const std::int32_t* backWeights, const std::int32_t* onWeights) noexcept {
    const auto twice = [](const Pixel& pixel) {
        const auto* bytes = reinterpret_cast<const std::byte*>(&pixel);
        return LoadFour<Pixel>(bytes, 0).first;
    };
    const auto load = [](const std::int32_t* weights) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(weights));
    };
    const FourPixels before = LoadFour<Pixel>(at - 3 * step, step);
    const FourPixels after = LoadFour<Pixel>(at + step, step);
    const __m128i backSource = twice(back);
    const __m128i onSource = twice(on);
    const __m128i backWeight = load(backWeights);
    const __m128i onWeight = load(onWeights);

    const auto either = [](__m128i a, __m128i b) { return _mm_or_si128(a, b); };
    const __m128i differences = either(
        either(_mm_xor_si128(before.first, backSource), _mm_xor_si128(before.last, backSource)),
        either(_mm_xor_si128(after.first, onSource), _mm_xor_si128(after.last, onSource)));
    __m128i others = either(_mm_and_si128(differences, _mm_set1_epi64x(0xFFFF)),
                            _mm_and_si128(either(backWeight, onWeight), _mm_set1_epi32(-65536)));
    if constexpr (std::is_same_v<Pixel, Pixel16>) {
        const auto above = [](__m128i channels) {
            return _mm_subs_epu16(channels, _mm_set1_epi16(-32768));
        };
        others = either(others, either(either(above(before.first), above(before.last)),
                                       either(above(after.first), above(after.last))));
    }
    if (_mm_movemask_epi8(_mm_cmpeq_epi8(others, _mm_setzero_si128())) != 0xFFFF) return false;

    // The weights of two pixels, in all of their channels.
    const auto spread = [](__m128i two) { return _mm_or_si128(two, _mm_slli_epi32(two, 16)); };
    StoreFour<Pixel>(
        at - 3 * step, step,
        {MixChannels(backSource, before.first, spread(_mm_shuffle_epi32(backWeight, 0xAF))),
         MixChannels(backSource, before.last, spread(_mm_shuffle_epi32(backWeight, 0x05)))});
    StoreFour<Pixel>(
        at + step, step,
        {MixChannels(onSource, after.first, spread(_mm_shuffle_epi32(onWeight, 0x50))),
         MixChannels(onSource, after.last, spread(_mm_shuffle_epi32(onWeight, 0xFA)))});
    return true;
}

}  // namespace

bool BlendAcross8(std::byte* at, std::ptrdiff_t step, const Pixel8& back, const Pixel8& on,
                  const std::int32_t* backWeights, const std::int32_t* onWeights) noexcept {
    return Blend(at, step, back, on, backWeights, onWeights);
}

bool BlendAcross16(std::byte* at, std::ptrdiff_t step, const Pixel16& back, const Pixel16& on,
                   const std::int32_t* backWeights, const std::int32_t* onWeights) noexcept {
    return Blend(at, step, back, on, backWeights, onWeights);
}
