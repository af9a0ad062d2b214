/// Measures a processor: prints the impulse response and the level at some frequencies, and saves both for Matlab.
///
///     measure_response FILE.mat
///
/// Ends with 0 when the file is written, 1 when it cannot be, 2 for wrong usage.

#include <cmath>
#include <complex>
#include <cstdio>
#include <iostream>
#include <iterator>

#include "HighPass.h"
#include "velmodsp.h"

using namespace velmodsp;

namespace {

constexpr float samplerate = 48000.0f;         // Hz
constexpr unsigned int responseLength = 8192;  // samples

/// What comes out of `processor`, which has one input and one output, when a single 1 goes in.
void MeasureImpulseResponse(SignalProcessing& processor, AudioBuffer& response) {
    processor.Configure(samplerate, responseLength, true);
    const short connected[] = {1, 1};
    processor.SetInletsAndOutletsStatus(connected);
    response.Resize(1, responseLength);
    response.Impulse();
    const float* ins[] = {response.GetChannel(0)};
    processor.performInternal(response.GetChannels(), ins, responseLength, 0, 0, 0);
}

/// Level in dB of the response at a frequency in Hz: 20 log10 |sum of h[n] e^(-j 2 pi f n / samplerate)|.
double LevelAt(const AudioBuffer& response, double frequency) {
    const double omega = Constants::TwoPi<double> * frequency / samplerate;
    std::complex<double> sum = 0.0;
    for (unsigned long n = 0; n < response.GetNumSamples(); ++n) {
        sum += static_cast<double>(response.GetChannel(0)[n]) * std::polar(1.0, -omega * static_cast<double>(n));
    }
    return Constants::TwentyOverLn10<double> * std::log(std::abs(sum));
}

void PrintFirstSamples(AudioBuffer& response, unsigned long numSamples) {
    AudioBuffer start(1, 0, false);  // owns nothing
    start.ReferenceExternalData(response.GetChannels(), 1, numSamples, 0);
    start.PrintMatlabLike(std::cout, 5);
}

bool Measure(const File& file) {
    HighPass highPass(1, 100.0f);
    AudioBuffer response(0, 0, true);
    MeasureImpulseResponse(highPass, response);
    PrintFirstSamples(response, 4);

    constexpr double frequencies[] = {10.0, 100.0, 1000.0, 10000.0};  // Hz
    Matrix<double> levels(2, std::size(frequencies));
    for (unsigned long column = 0; column < std::size(frequencies); ++column) {
        levels(0, column) = frequencies[column];
        levels(1, column) = LevelAt(response, frequencies[column]);
    }
    levels.Print(std::cout, 2, "levels");

    Matrix<float> samples;
    response.CopyTo(samples);
    MatFileWriter writer(file, true);
    return writer.Write("response", samples) && writer.Write("levels", levels);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FILE.mat\n", argv[0]);
        return 2;
    }
    try {
        return Measure(File(argv[1])) ? 0 : 1;
    } catch (const Exception&) {
        return 1;  // it has reported itself
    }
}
