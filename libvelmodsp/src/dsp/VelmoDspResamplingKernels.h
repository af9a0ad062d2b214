#pragma once

#include <array>
#include <span>
#include <tuple>

namespace velmodsp {

/// One channel's half-band filter of an odd number N of `Taps`, with K = (N + 1) / 2 coefficients c1 to cK on either
/// side of the centre's c0: what `ResamplingKernels` computes with, and the samples that it still needs.
template <unsigned int Taps>
struct HalfBandFilter {
    static constexpr unsigned int NumSideCoefficients = (Taps + 1) / 2;
    static constexpr unsigned int WidestVector = 8;  // samples; histories are whole vectors of every instruction set
    static constexpr unsigned int NumEvens = (Taps / WidestVector + 1) * WidestVector;
    static constexpr unsigned int NumOdds = (NumSideCoefficients / WidestVector + 1) * WidestVector;

    /// The centre's, then those beside it outwards.
    std::array<float, NumSideCoefficients + 1> coefficients;
    /// The last even and odd input samples, the newest at the end. The filter needs N evens and K odds; what is older
    /// may be anything.
    std::array<float, NumEvens> evens{};
    std::array<float, NumOdds> odds{};
};

/// The inner loops of the resamplers for one channel, in a version for every instruction set. All versions add in one
/// fixed order, from the oldest input sample to the newest, with every product rounded before it is added; so they give
/// the same bits for the same input, however it is cut into blocks. (Of a NaN only that it is one.)
///
/// With x the input and y the output of a channel, where a decimator reads `2 * n` samples to write `n`:
///
///     3 taps           y[i] = x[2i-1]/4 + x[2i]/2 + x[2i+1]/4
///     N = 5, 7, 9 taps y[i] = cK x[2i-2N] + ... + c1 x[2i-N-1] + c0 x[2i-N] + c1 x[2i-N+1] + ... + cK x[2i]
///     interpolation    y[2i] = (x[i-1] + x[i]) / 2,  y[2i+1] = x[i]
///
/// Any thread; real-time safe.
struct ResamplingKernels {
    template <unsigned int Taps>
    using Decimator = void (*)(float* out, const float* in, unsigned int n, HalfBandFilter<Taps>& filter) noexcept;

    const char* name;  ///< of the instruction set

    /// The decimator of 3 taps. `out` may be `in`. Takes x[-1]/4 and returns the same for the next block: x[2n-1]/4.
    float (*decimate3)(float* out, const float* in, unsigned int n, float lastQuarter) noexcept;

    /// The decimators of 5, 7 and 9 taps. `out` may be `in`.
    std::tuple<Decimator<5>, Decimator<7>, Decimator<9>> decimators;

    /// Reads `n` samples and writes `2 * n`, which must not overlap. Takes x[-1], returns x[n-1].
    float (*interpolate)(float* out, const float* in, unsigned int n, float last) noexcept;

    template <unsigned int Taps>
    Decimator<Taps> Decimate() const noexcept {
        return std::get<Decimator<Taps>>(decimators);
    }

    /// The fastest that this processor runs; chosen when the program or plug-in is loaded.
    static const ResamplingKernels& Active() noexcept;

    /// All that this processor runs, from the plain loops to the fastest.
    static std::span<const ResamplingKernels* const> Available() noexcept;
};

}  // namespace velmodsp
