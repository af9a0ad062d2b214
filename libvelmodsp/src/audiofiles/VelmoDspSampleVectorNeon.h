#pragma once

#include <arm_neon.h>

#include <cstdint>
#include <cstring>

namespace velmodsp {

/// Four samples at once with NEON, which every 64-bit ARM processor has.
struct SampleVector {
    using Words = uint32x4_t;

    static Words Load(const void* words) noexcept {
        return vreinterpretq_u32_u8(vld1q_u8(static_cast<const unsigned char*>(words)));
    }
    static void Store(Words words, void* dest) noexcept {
        vst1q_u8(static_cast<unsigned char*>(dest), vreinterpretq_u8_u32(words));
    }

    /// Four little-endian samples of `Size` bytes each, left-justified.
    template <int Size>
    static Words LoadSamples(const unsigned char* bytes) noexcept {
        if constexpr (Size == 1) {
            const uint16x8_t pairs = vshll_n_u8(Load32(bytes), 8);
            return vshll_n_u16(vget_low_u16(pairs), 16);
        } else if constexpr (Size == 2) {
            return vshll_n_u16(vreinterpret_u16_u8(vld1_u8(bytes)), 16);
        } else if constexpr (Size == 3) {
            constexpr unsigned char none = 0xFF;
            constexpr unsigned char places[] = {none, 0, 1, 2, none, 3, 4, 5, none, 6, 7, 8, none, 9, 10, 11};
            const uint8x16_t samples = vcombine_u8(vld1_u8(bytes), Load32(bytes + 8));
            return vreinterpretq_u32_u8(vqtbl1q_u8(samples, vld1q_u8(places)));
        } else {
            return Load(bytes);
        }
    }

    /// The upper `Size` bytes of each word, little-endian.
    template <int Size>
    static void StoreSamples(Words words, unsigned char* dest) noexcept {
        if constexpr (Size == 1) {
            const uint16x4_t pairs = vshrn_n_u32(words, 16);
            Store32(vshrn_n_u16(vcombine_u16(pairs, pairs), 8), dest);
        } else if constexpr (Size == 2) {
            vst1_u8(dest, vreinterpret_u8_u16(vshrn_n_u32(words, 16)));
        } else if constexpr (Size == 3) {
            constexpr unsigned char places[] = {1, 2, 3, 5, 6, 7, 9, 10, 11, 13, 14, 15, 0, 0, 0, 0};
            const uint8x16_t samples = vqtbl1q_u8(vreinterpretq_u8_u32(words), vld1q_u8(places));
            vst1_u8(dest, vget_low_u8(samples));
            Store32(vget_high_u8(samples), dest + 8);
        } else {
            Store(words, dest);
        }
    }

    /// Reverses the upper `Size` bytes of each word. What is below them in the result does not matter or was zero.
    template <int Size>
    static Words ReverseSamples(Words words) noexcept {
        const uint8x16_t bytes = vreinterpretq_u8_u32(words);
        if constexpr (Size == 1) return words;
        if constexpr (Size == 2) return vreinterpretq_u32_u8(vrev16q_u8(bytes));
        const uint32x4_t reversed = vreinterpretq_u32_u8(vrev32q_u8(bytes));
        return Size == 3 ? vshlq_n_u32(reversed, 8) : reversed;
    }

    static Words FlipSigns(Words words) noexcept { return veorq_u32(words, vdupq_n_u32(0x80000000u)); }

    static Words FloatsOfWords(Words words) noexcept {
        return vreinterpretq_u32_f32(vcvtq_n_f32_s32(vreinterpretq_s32_u32(words), 31));
    }

    static Words WordsOfFloats(Words bits) noexcept {
        // Scaling is exact. The conversion rounds to the nearest, saturates, and makes 0 of NaN.
        const float32x4_t scaled = vmulq_n_f32(vreinterpretq_f32_u32(bits), 0x1p31f);
        return vreinterpretq_u32_s32(vcvtnq_s32_f32(scaled));
    }

    /// Rows become columns.
    static void Transpose(Words (&rows)[4]) noexcept {
        const uint64x2_t even01 = Pairs(vtrn1q_u32(rows[0], rows[1])), odd01 = Pairs(vtrn2q_u32(rows[0], rows[1]));
        const uint64x2_t even23 = Pairs(vtrn1q_u32(rows[2], rows[3])), odd23 = Pairs(vtrn2q_u32(rows[2], rows[3]));
        rows[0] = vreinterpretq_u32_u64(vtrn1q_u64(even01, even23));
        rows[1] = vreinterpretq_u32_u64(vtrn1q_u64(odd01, odd23));
        rows[2] = vreinterpretq_u32_u64(vtrn2q_u64(even01, even23));
        rows[3] = vreinterpretq_u32_u64(vtrn2q_u64(odd01, odd23));
    }

    /// From eight words in a row: those at even places into `first`, those at odd places into `second`.
    static void Unzip(Words& first, Words& second) noexcept {
        const uint32x4_t even = vuzp1q_u32(first, second);
        second = vuzp2q_u32(first, second);
        first = even;
    }

    /// The reverse of `Unzip`.
    static void Zip(Words& first, Words& second) noexcept {
        const uint32x4_t low = vzip1q_u32(first, second);
        second = vzip2q_u32(first, second);
        first = low;
    }

private:
    static uint64x2_t Pairs(Words words) noexcept { return vreinterpretq_u64_u32(words); }
    static uint8x8_t Load32(const unsigned char* bytes) noexcept {
        std::uint32_t value;
        std::memcpy(&value, bytes, sizeof value);
        return vreinterpret_u8_u32(vdup_n_u32(value));
    }
    static void Store32(uint8x8_t bytes, unsigned char* dest) noexcept {
        const std::uint32_t value = vget_lane_u32(vreinterpret_u32_u8(bytes), 0);
        std::memcpy(dest, &value, sizeof value);
    }
};

}  // namespace velmodsp
