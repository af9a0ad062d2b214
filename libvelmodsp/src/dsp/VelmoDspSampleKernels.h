#pragma once

#include <span>

namespace velmodsp {

/// The inner loops of the signal path for one channel, written once for every instruction set. On one processor all of
/// them give the same bits for the same input, whatever its length and alignment. The conversions do as the thread's
/// control word says (rounding, denormals); the others only move bits.
///
///     SampleKernels::Active().narrow(out, in, n);
///
/// Any thread; real-time safe. What they cost does not depend on the samples, except that it stays low up to the first
/// bad one.
struct SampleKernels {
    const char* name;  ///< of the instruction set

    /// 64 to 32 bits. A magnitude beyond the range becomes an infinity; a NaN keeps its sign and the upper bits of its
    /// payload and becomes quiet. `out` and `in` must not overlap.
    void (*narrow)(float* out, const double* in, unsigned long n) noexcept;

    /// 32 to 64 bits, exactly, except that a NaN becomes quiet. `out` and `in` must not overlap.
    void (*widen)(double* out, const float* in, unsigned long n) noexcept;

    /// Copies the samples before the first that is NaN or infinite; `out` keeps the rest of what it holds. `out` may
    /// be `in`.
    /// @return how many it copied, which is the index of the first bad sample or `n`
    unsigned long (*passFinite)(float* out, const float* in, unsigned long n) noexcept;

    /// Copies finite samples and writes `value` for every other one. `out` may be `in`.
    void (*replaceByGivenValue)(float* out, const float* in, unsigned long n, float value) noexcept;

    /// Copies finite samples and writes for every other one the last finite one before it, or `last` if there is none.
    /// `out` may be `in`.
    /// @return the last finite sample, or `last`: what the next block starts with
    float (*replaceByLastValue)(float* out, const float* in, unsigned long n, float last) noexcept;

    /// The fastest that this processor runs; chosen when the program or plug-in is loaded.
    static const SampleKernels& Active() noexcept { return *active; }

    /// All that this processor runs, from the plain loops to the fastest.
    static std::span<const SampleKernels* const> Available() noexcept;

private:
    static bool ChooseFastest() noexcept;

    static const SampleKernels* active;
    static const bool chosen;
};

}  // namespace velmodsp
