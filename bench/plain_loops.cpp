#include "bench/plain_loops.h"

#include <emmintrin.h>

namespace bench {

namespace {

/// Two pixels as 16-bit channels, `out` weakened by what the source's alpha leaves of it.
__m128i weakened(__m128i out, __m128i source) noexcept
{
    const __m128i alpha =
        _mm_shufflehi_epi16(_mm_shufflelo_epi16(source, _MM_SHUFFLE(3, 3, 3, 3)), _MM_SHUFFLE(3, 3, 3, 3));
    const __m128i product =
        _mm_add_epi16(_mm_mullo_epi16(out, _mm_sub_epi16(_mm_set1_epi16(255), alpha)), _mm_set1_epi16(128));
    return _mm_srli_epi16(_mm_add_epi16(product, _mm_srli_epi16(product, 8)), 8); // divided by 255, rounded
}

} // namespace

void plainBlend(std::uint32_t* out, const std::uint32_t* source, std::size_t count) noexcept
{
    const __m128i zero = _mm_setzero_si128();
    for (std::size_t i = 0; i < count; i += 4) {
        const __m128i top = _mm_loadu_si128(reinterpret_cast<const __m128i*>(source + i));
        const __m128i bottom = _mm_loadu_si128(reinterpret_cast<const __m128i*>(out + i));
        const __m128i low = weakened(_mm_unpacklo_epi8(bottom, zero), _mm_unpacklo_epi8(top, zero));
        const __m128i high = weakened(_mm_unpackhi_epi8(bottom, zero), _mm_unpackhi_epi8(top, zero));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), _mm_adds_epu8(top, _mm_packus_epi16(low, high)));
    }
}

} // namespace bench
