#include "dsp/VelmoDspDownsampler.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/Noise.h"

namespace velmodsp {
namespace {

struct Filter {
    std::vector<unsigned int> taps;  // numbers that ask for this filter
    std::size_t lookAhead;           // input samples after x[2i] that y[i] needs
    std::vector<double> half;        // what is not zero of the impulse response before its middle, which is 0.5
};

const std::vector<Filter> Filters{
    {{3, 0, 4, 11}, 1, {0.25}},
    {{5}, 0, {0.013005780056118965, -0.06358381360769272, 0.3005780279636383}},
    {{7}, 0, {-0.0037406482733786106, 0.020573565736413002, -0.07231920212507248, 0.3054862916469574}},
    {{9}, 0, {0.0010986328125, -0.007080078125, 0.02618408203125, -0.07794189453125, 0.3077392578125}}};

/// The whole response at the input's rate: a half-band filter is symmetric and zero at every other sample.
std::vector<double> Response(const Filter& filter) {
    const std::size_t middle = 2 * filter.half.size() - 1;
    std::vector<double> response(2 * middle + 1);
    response[middle] = 0.5;
    for (std::size_t i = 0; i < filter.half.size(); ++i) response[2 * i] = response[2 * (middle - i)] = filter.half[i];
    return response;
}

/// Every second output of the convolution sum, in double precision.
std::vector<float> Convolve(const Filter& filter, const std::vector<float>& x) {
    const std::vector<double> response = Response(filter);
    std::vector<float> y(x.size() / 2);
    for (std::size_t i = 0; i < y.size(); ++i) {
        double sum = 0.0;
        for (std::size_t j = 0; j < response.size(); ++j) {
            const std::size_t newest = 2 * i + filter.lookAhead;
            if (newest >= j) sum += response[j] * x[newest - j];
        }
        y[i] = static_cast<float>(sum);
    }
    return y;
}

TEST(Downsampler, IsTheConvolutionSumInBlocksOfAnyLengthAndInPlace) {
    const std::vector<float> x = Noise(400, 1);
    for (const Filter& filter : Filters) {
        const std::vector<float> expected = Convolve(filter, x);
        for (unsigned int taps : filter.taps) {
            const std::unique_ptr<Downsampler> decimator(Downsampler::Create(taps));
            for (unsigned int blockSize : {1u, 7u, 200u}) {
                std::vector<float> y = x;
                for (unsigned int start = 0; start < 200; start += blockSize) {
                    const unsigned int n = std::min(blockSize, 200 - start);
                    decimator->Process(y.data() + 2 * start, y.data() + 2 * start, n);
                    std::copy_n(y.data() + 2 * start, n, y.data() + start);
                }
                for (unsigned int i = 0; i < 200; ++i) {
                    ASSERT_NEAR(y[i], expected[i], 1e-6) << taps << " taps, blocks of " << blockSize << ", y[" << i;
                }
                decimator->Clear();
            }
        }
    }
}

}  // namespace
}  // namespace velmodsp
