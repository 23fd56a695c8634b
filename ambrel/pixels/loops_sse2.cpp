#include "ambrel/pixels/loops.h"

#if defined(__SSE2__) || defined(_M_X64)

#include <algorithm>
#include <emmintrin.h>

namespace ambrel {

namespace {

__m128i load4(const Pixel* p)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}
void store4(Pixel* p, __m128i v)
{
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
}

/// Eight 16-bit products divided by 255, rounded to nearest.
__m128i div255x8(__m128i v)
{
    v = _mm_add_epi16(v, _mm_set1_epi16(128));
    return _mm_srli_epi16(_mm_add_epi16(v, _mm_srli_epi16(v, 8)), 8);
}

/// Two pixels as eight 16-bit channels: each channel replaced by its pixel's alpha.
__m128i spreadAlpha(__m128i channels)
{
    return _mm_shufflehi_epi16(_mm_shufflelo_epi16(channels, _MM_SHUFFLE(3, 3, 3, 3)), _MM_SHUFFLE(3, 3, 3, 3));
}

/// Four pixels times four factors, given as 16-bit channels of the lower and the upper two pixels.
__m128i times(__m128i pixels, __m128i factorLow, __m128i factorHigh)
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i low = div255x8(_mm_mullo_epi16(_mm_unpacklo_epi8(pixels, zero), factorLow));
    const __m128i high = div255x8(_mm_mullo_epi16(_mm_unpackhi_epi8(pixels, zero), factorHigh));
    return _mm_packus_epi16(low, high);
}

__m128i over4(__m128i source, __m128i below)
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i rest = _mm_xor_si128(source, _mm_set1_epi32(-1)); // 255 - each channel; alpha is the one that counts
    const __m128i restLow = spreadAlpha(_mm_unpacklo_epi8(rest, zero));
    const __m128i restHigh = spreadAlpha(_mm_unpackhi_epi8(rest, zero));
    return _mm_adds_epu8(source, times(below, restLow, restHigh));
}

bool allBlank(__m128i pixels)
{
    return _mm_movemask_epi8(_mm_cmpeq_epi32(pixels, _mm_setzero_si128())) == 0xFFFF;
}

/// True when all four alphas are 255: bits 3, 7, 11 and 15 of the comparison of bytes.
bool allOpaque(__m128i pixels)
{
    return (_mm_movemask_epi8(_mm_cmpeq_epi8(pixels, _mm_set1_epi32(-1))) & 0x8888) == 0x8888;
}

void fill(Pixel* out, std::size_t count, Pixel value)
{
    const __m128i four = _mm_set1_epi32(static_cast<int>(value));
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4)
        store4(out + i, four);
    for (; i < count; ++i)
        out[i] = value;
}

void blend(Pixel* out, const Pixel* source, std::size_t count)
{
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        const __m128i s = load4(source + i);
        if (allOpaque(s))
            store4(out + i, s);
        else if (!allBlank(s))
            store4(out + i, over4(s, load4(out + i)));
    }
    for (; i < count; ++i)
        out[i] = over(source[i], out[i]);
}

void blendWeakened(Pixel* out, const Pixel* source, std::size_t count, int opacity)
{
    const __m128i factor = _mm_set1_epi16(static_cast<short>(opacity));
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        const __m128i s = load4(source + i);
        if (!allBlank(s))
            store4(out + i, over4(times(s, factor, factor), load4(out + i)));
    }
    for (; i < count; ++i)
        out[i] = over(weakened(source[i], opacity), out[i]);
}

void blendColour(Pixel* out, std::size_t count, Pixel colour)
{
    const __m128i s = _mm_set1_epi32(static_cast<int>(colour));
    const __m128i rest = _mm_set1_epi16(static_cast<short>(255 - alphaOf(colour)));
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4)
        store4(out + i, _mm_adds_epu8(s, times(load4(out + i), rest, rest)));
    for (; i < count; ++i)
        out[i] = over(colour, out[i]);
}

void blendMask(Pixel* out, const std::uint8_t* mask, std::size_t count, Pixel colour)
{
    const __m128i four = _mm_set1_epi32(static_cast<int>(colour));
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        const int packed =
            mask[i] | mask[i + 1] << 8 | mask[i + 2] << 16 | static_cast<int>(static_cast<unsigned>(mask[i + 3]) << 24);
        if (packed == 0)
            continue;
        __m128i m = _mm_cvtsi32_si128(packed);
        m = _mm_unpacklo_epi8(m, m);  // m0 m0 m1 m1 m2 m2 m3 m3
        m = _mm_unpacklo_epi16(m, m); // each mask value four times
        const __m128i zero = _mm_setzero_si128();
        const __m128i s = times(four, _mm_unpacklo_epi8(m, zero), _mm_unpackhi_epi8(m, zero));
        store4(out + i, over4(s, load4(out + i)));
    }
    for (; i < count; ++i)
        out[i] = over(weakened(colour, mask[i]), out[i]);
}

/// The four channels' 32-bit sums as a rounded pixel.
__m128i rounded(__m128i sums)
{
    return _mm_srai_epi32(_mm_add_epi32(sums, _mm_set1_epi32(kWeightOne / 2)), kWeightBits);
}

/// One pixel's four channels times a weight, as 32-bit numbers.
__m128i weighted(Pixel pixel, std::int16_t weight)
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i channels = _mm_unpacklo_epi8(_mm_cvtsi32_si128(static_cast<int>(pixel)), zero);
    return _mm_madd_epi16(_mm_unpacklo_epi16(channels, zero), _mm_set1_epi32(weight));
}

Pixel pixelOf(__m128i sums)
{
    const __m128i zero = _mm_setzero_si128();
    return static_cast<Pixel>(_mm_cvtsi128_si32(_mm_packus_epi16(_mm_packs_epi32(rounded(sums), zero), zero)));
}

__m128i weightPair(const std::int16_t* weights, int t, int taps)
{
    const unsigned second = t + 1 < taps ? static_cast<std::uint16_t>(weights[t + 1]) : 0u;
    return _mm_set1_epi32(static_cast<int>(second << 16 | static_cast<std::uint16_t>(weights[t])));
}

void mixRows(Pixel* out, const Pixel* const* rows, const std::int16_t* weights, int taps, std::size_t count)
{
    const __m128i zero = _mm_setzero_si128();
    std::size_t x = 0;
    for (; x + 4 <= count; x += 4) {
        __m128i sums[4] = {zero, zero, zero, zero};
        for (int t = 0; t < taps; t += 2) {
            const __m128i a = load4(rows[t] + x);
            const __m128i b = load4(rows[std::min(t + 1, taps - 1)] + x);
            const __m128i w = weightPair(weights, t, taps);
            const __m128i low = _mm_unpacklo_epi8(a, b);  // a0 b0 a1 b1 ... of pixels 0 and 1
            const __m128i high = _mm_unpackhi_epi8(a, b); // ... of pixels 2 and 3
            sums[0] = _mm_add_epi32(sums[0], _mm_madd_epi16(_mm_unpacklo_epi8(low, zero), w));
            sums[1] = _mm_add_epi32(sums[1], _mm_madd_epi16(_mm_unpackhi_epi8(low, zero), w));
            sums[2] = _mm_add_epi32(sums[2], _mm_madd_epi16(_mm_unpacklo_epi8(high, zero), w));
            sums[3] = _mm_add_epi32(sums[3], _mm_madd_epi16(_mm_unpackhi_epi8(high, zero), w));
        }
        const __m128i low = _mm_packs_epi32(rounded(sums[0]), rounded(sums[1]));
        const __m128i high = _mm_packs_epi32(rounded(sums[2]), rounded(sums[3]));
        store4(out + x, _mm_packus_epi16(low, high));
    }
    for (; x < count; ++x) {
        __m128i sum = zero;
        for (int t = 0; t < taps; ++t)
            sum = _mm_add_epi32(sum, weighted(rows[t][x], weights[t]));
        out[x] = pixelOf(sum);
    }
}

Pixel mixNeighbours(const Pixel* first, const std::int16_t* weights, int taps)
{
    const __m128i zero = _mm_setzero_si128();
    __m128i sum = zero;
    int t = 0;
    for (; t + 2 <= taps; t += 2) {
        const __m128i two = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(first + t));
        const __m128i pairs =
            _mm_unpacklo_epi8(two, _mm_srli_si128(two, 4)); // channel of the first, of the second, ...
        sum = _mm_add_epi32(sum, _mm_madd_epi16(_mm_unpacklo_epi8(pairs, zero), weightPair(weights, t, taps)));
    }
    if (t < taps)
        sum = _mm_add_epi32(sum, weighted(first[t], weights[t]));
    return pixelOf(sum);
}

constexpr RowLoops kFast{fill, blend, blendWeakened, blendColour, blendMask, mixRows, mixNeighbours};

} // namespace

const RowLoops& fastLoops() noexcept
{
    return kFast;
}

} // namespace ambrel

#else

namespace ambrel {
const RowLoops& fastLoops() noexcept
{
    return plainLoops();
}
} // namespace ambrel

#endif
