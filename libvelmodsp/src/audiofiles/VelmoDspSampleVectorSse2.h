#pragma once

#include <emmintrin.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace velmodsp {

/// Four samples at once with SSE2, which every 64-bit x86 processor has.
struct SampleVector {
    using Words = __m128i;

    static Words Load(const void* words) noexcept { return _mm_loadu_si128(static_cast<const __m128i*>(words)); }
    static void Store(Words words, void* dest) noexcept { _mm_storeu_si128(static_cast<__m128i*>(dest), words); }

    /// Four little-endian samples of `Size` bytes each, left-justified.
    template <int Size>
    static Words LoadSamples(const unsigned char* bytes) noexcept {
        const __m128i zero = _mm_setzero_si128();
        if constexpr (Size == 1) {
            const __m128i pairs = _mm_unpacklo_epi8(zero, _mm_cvtsi32_si128(Load32(bytes)));
            return _mm_unpacklo_epi16(zero, pairs);
        } else if constexpr (Size == 2) {
            return _mm_unpacklo_epi16(zero, Load64(bytes));
        } else if constexpr (Size == 3) {
            // A word that begins a byte early has the sample in its upper bytes; the first one must not.
            const __m128i words = _mm_set_epi32(Load32(bytes + 8), Load32(bytes + 5), Load32(bytes + 2),
                                                static_cast<int>(static_cast<unsigned int>(Load32(bytes)) << 8));
            return _mm_and_si128(words, _mm_set1_epi32(~0xFF));
        } else {
            return Load(bytes);
        }
    }

    /// The upper `Size` bytes of each word, little-endian.
    template <int Size>
    static void StoreSamples(Words words, unsigned char* dest) noexcept {
        if constexpr (Size == 1) {
            const __m128i pairs = _mm_packs_epi32(_mm_srai_epi32(words, 24), words);
            Store32(_mm_packs_epi16(pairs, pairs), dest);
        } else if constexpr (Size == 2) {
            const __m128i upper = _mm_srai_epi32(words, 16);
            _mm_storel_epi64(reinterpret_cast<__m128i*>(dest), _mm_packs_epi32(upper, upper));
        } else if constexpr (Size == 3) {
            // Two samples each in the lower 6 bytes of the halves, then the halves side by side.
            const __m128i even = _mm_and_si128(_mm_srli_epi64(words, 8), _mm_set1_epi64x(0xFFFFFF));
            const __m128i odd = _mm_and_si128(_mm_srli_epi64(words, 16), _mm_set1_epi64x(0xFFFFFF000000));
            const __m128i halves = _mm_or_si128(even, odd);
            const auto lower = static_cast<std::uint64_t>(_mm_cvtsi128_si64(halves));
            const auto upper = static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(halves, halves)));
            const std::uint64_t eight = lower | upper << 48;
            const auto four = static_cast<std::uint32_t>(upper >> 16);
            std::memcpy(dest, &eight, sizeof eight);
            std::memcpy(dest + 8, &four, sizeof four);
        } else {
            Store(words, dest);
        }
    }

    /// Reverses the upper `Size` bytes of each word. What is below them in the result does not matter or was zero.
    template <int Size>
    static Words ReverseSamples(Words words) noexcept {
        if constexpr (Size == 1) return words;
        const __m128i swapped = _mm_or_si128(_mm_slli_epi16(words, 8), _mm_srli_epi16(words, 8));
        if constexpr (Size == 2) return swapped;
        const __m128i reversed =
            _mm_shufflehi_epi16(_mm_shufflelo_epi16(swapped, _MM_SHUFFLE(2, 3, 0, 1)), _MM_SHUFFLE(2, 3, 0, 1));
        return Size == 3 ? _mm_slli_epi32(reversed, 8) : reversed;
    }

    static Words FlipSigns(Words words) noexcept {
        return _mm_xor_si128(words, _mm_set1_epi32(static_cast<int>(0x80000000u)));
    }

    static Words FloatsOfWords(Words words) noexcept {
        return _mm_castps_si128(_mm_mul_ps(_mm_cvtepi32_ps(words), _mm_set1_ps(0x1p-31f)));
    }

    static Words WordsOfFloats(Words bits) noexcept {
        const __m128 samples = _mm_castsi128_ps(bits);
        // Scaling is exact. What does not fit, NaN included, becomes the lowest word.
        const __m128i words = _mm_cvtps_epi32(_mm_mul_ps(samples, _mm_set1_ps(0x1p31f)));
        const __m128i isFullScale = _mm_castps_si128(_mm_cmpge_ps(samples, _mm_set1_ps(1.0f)));
        const __m128i isNumber = _mm_castps_si128(_mm_cmpord_ps(samples, samples));
        return _mm_and_si128(_mm_xor_si128(words, isFullScale), isNumber);
    }

    /// Rows become columns.
    static void Transpose(Words (&rows)[4]) noexcept {
        const __m128i low01 = _mm_unpacklo_epi32(rows[0], rows[1]), high01 = _mm_unpackhi_epi32(rows[0], rows[1]);
        const __m128i low23 = _mm_unpacklo_epi32(rows[2], rows[3]), high23 = _mm_unpackhi_epi32(rows[2], rows[3]);
        rows[0] = _mm_unpacklo_epi64(low01, low23);
        rows[1] = _mm_unpackhi_epi64(low01, low23);
        rows[2] = _mm_unpacklo_epi64(high01, high23);
        rows[3] = _mm_unpackhi_epi64(high01, high23);
    }

    /// From eight words in a row: those at even places into `first`, those at odd places into `second`.
    static void Unzip(Words& first, Words& second) noexcept {
        const __m128 a = _mm_castsi128_ps(first), b = _mm_castsi128_ps(second);
        first = _mm_castps_si128(_mm_shuffle_ps(a, b, _MM_SHUFFLE(2, 0, 2, 0)));
        second = _mm_castps_si128(_mm_shuffle_ps(a, b, _MM_SHUFFLE(3, 1, 3, 1)));
    }

    /// The reverse of `Unzip`.
    static void Zip(Words& first, Words& second) noexcept {
        const __m128i low = _mm_unpacklo_epi32(first, second);
        second = _mm_unpackhi_epi32(first, second);
        first = low;
    }

private:
    static int Load32(const unsigned char* bytes) noexcept {
        int value;
        std::memcpy(&value, bytes, sizeof value);
        return value;
    }
    static Words Load64(const unsigned char* bytes) noexcept {
        return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(bytes));
    }
    static void Store32(Words words, unsigned char* dest) noexcept {
        const int value = _mm_cvtsi128_si32(words);
        std::memcpy(dest, &value, sizeof value);
    }
};

}  // namespace velmodsp
