#pragma once

#include "dsp/VelmoDspResamplingKernels.h"

namespace velmodsp {

/// Halves the sample rate of one channel: a half-band low-pass filter of which only every second output is computed.
/// Its gain at DC is 1. In the formulas x is the input, y the output, x[2i] the even input samples; indices run on from
/// block to block, and samples before the first one are 0.
///
///     std::unique_ptr<Downsampler> decimator(Downsampler::Create(9));   // main thread
///     decimator->Process(half, full, 32);                               // audio thread: 64 samples in, 32 out
class Downsampler {
public:
    /// Makes the decimator of `taps` taps: 3, 5, 7 or 9, and 3 for any other number. The more taps, the steeper the
    /// filter and the longer its delay; see the classes below. The caller owns it.
    static Downsampler* Create(unsigned int taps);

    virtual ~Downsampler() = default;
    Downsampler(const Downsampler&) = delete;
    Downsampler& operator=(const Downsampler&) = delete;

    /// Reads `2 * numOutputFrames` samples from `in` and writes `numOutputFrames` samples to `out`, which may be the
    /// same buffer. Audio thread; real-time safe.
    virtual void Process(float* out, const float* in, unsigned int numOutputFrames) = 0;

    /// Forgets the samples that passed. Audio thread, or main thread while audio is stopped; real-time safe.
    virtual void Clear() = 0;

protected:
    explicit Downsampler(unsigned int numTaps) : taps(numTaps) {}

    const unsigned int taps;
};

/// y[i] = x[2i-1]/4 + x[2i]/2 + x[2i+1]/4: no delay.
class Downsampler3Taps final : public Downsampler {
public:
    Downsampler3Taps() : Downsampler(3) {}
    void Process(float* out, const float* in, unsigned int numOutputFrames) override;
    void Clear() override { lastQuarter = 0.0f; }

private:
    float lastQuarter = 0.0f;  // x[2i+1]/4 of the last output: the next one's x[2i-1]/4
};

/// A half-band filter of an odd number N of `Taps`, with K = (N + 1) / 2 coefficients c1 to cK on either side of the
/// centre's c0, and a delay of N input samples:
///
///     y[i] = c0 x[2i-N] + sum over k = 1..K of ck (x[2i-N+(2k-1)] + x[2i-N-(2k-1)])
///
/// Every other tap but the centre is zero, so even input samples only meet the side coefficients and odd ones only the
/// centre.
template <unsigned int Taps>
class HalfBandDownsampler : public Downsampler {
public:
    void Process(float* out, const float* in, unsigned int numOutputFrames) override;
    void Clear() override;

protected:
    /// @param coefficients the centre's, then those beside it outwards; those beside it add up to a quarter
    explicit HalfBandDownsampler(const decltype(HalfBandFilter<Taps>::coefficients)& coefficients)
        : Downsampler(Taps), filter{coefficients} {}

private:
    HalfBandFilter<Taps> filter;
};

/// Delay 5 input samples.
class Downsampler5Taps final : public HalfBandDownsampler<5> {
public:
    Downsampler5Taps();
};

/// Delay 7 input samples.
class Downsampler7Taps final : public HalfBandDownsampler<7> {
public:
    Downsampler7Taps();
};

/// Delay 9 input samples.
class Downsampler9Taps final : public HalfBandDownsampler<9> {
public:
    Downsampler9Taps();
};

}  // namespace velmodsp
