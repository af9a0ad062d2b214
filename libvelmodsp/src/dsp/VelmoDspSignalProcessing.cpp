#include "dsp/VelmoDspSignalProcessing.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <exception>
#include <locale>
#include <ostream>
#include <sstream>

#include "dsp/VelmoDspDenormals.h"
#include "dsp/VelmoDspMultiDownsampler.h"
#include "dsp/VelmoDspMultiUpsampler.h"
#include "platform/VelmoDspVectorConversion.h"
#include "utils/VelmoDspException.h"

namespace velmodsp {

namespace {

constexpr unsigned int HalfRateTaps = 9;

/// Runs `step` and lets nothing but the library's own exceptions out: any other one means that the state can no longer
/// be trusted, and on the audio thread nobody could handle it.
template <class Step>
void LetOnlyOwnExceptionsPass(const Step& step) {
    try {
        step();
    } catch (const Exception&) {
        throw;
    } catch (...) {
        std::terminate();
    }
}

const float** AsInputs(AudioBuffer& buffer) { return const_cast<const float**>(buffer.GetChannels()); }

/// Samples of a cache line: vectors that cross the end of one take twice the time.
constexpr unsigned long LineLength = 16;

unsigned long SamplesToNextLine(const float* samples) {
    return static_cast<unsigned long>((0 - reinterpret_cast<std::uintptr_t>(samples) / sizeof(float)) % LineLength);
}

/// Makes `buffer` hold at least `numSamples` a channel, every channel from the start of a cache line. It never shrinks,
/// so that blocks of varying lengths do not allocate, and new room is silent, so that nothing undefined can reach an
/// output.
void Reserve(AudioBuffer& buffer, unsigned int numChannels, unsigned long numSamples) {
    if (buffer.GetNumChannels() == numChannels && buffer.GetNumSamples() >= numSamples) return;
    const unsigned long wholeLines = (numSamples + LineLength - 1) / LineLength * LineLength;
    buffer.Resize(numChannels, wholeLines + LineLength);
    buffer.Zero();
    float** const channels = buffer.GetChannels();
    buffer.ReferenceExternalData(channels, numChannels, wholeLines, SamplesToNextLine(channels[0]));
}

void Narrow(float** outs, const double* const* ins, unsigned int numChannels, unsigned long n) {
    for (unsigned int k = 0; k < numChannels; ++k) VectorConversion::DoubleToFloat(outs[k], ins[k], n);
}

void Widen(double** outs, const float* const* ins, unsigned int numChannels, unsigned long n) {
    for (unsigned int k = 0; k < numChannels; ++k) VectorConversion::FloatToDouble(outs[k], ins[k], n);
}

template <class Sample>
void ClearConnected(const MaxMspAutoMute& connections, Sample** outs, unsigned int first, unsigned int end,
                    unsigned long n) {
    for (unsigned int k = first; k < end; ++k) {
        if (connections.IsOutletConnected(k)) std::fill_n(outs[k], n, Sample{0});
    }
}

template <class Sample>
void CopyActive(const MaxMspAutoMute& connections, Sample** outs, const Sample** ins, unsigned int numIns,
                unsigned int numOuts, unsigned long n) {
    const unsigned int numPairs = std::min(numIns, numOuts);
    for (unsigned int k = 0; k < numPairs; ++k) {
        if (connections.IsChannelConnected(k)) {
            std::memmove(outs[k], ins[k], n * sizeof(Sample));  // input and output may be one buffer
        } else {
            ClearConnected(connections, outs, k, k + 1, n);
        }
    }
    ClearConnected(connections, outs, numPairs, numOuts, n);
}

}  // namespace

SignalProcessing::SignalProcessing(unsigned int numberOfInputs, unsigned int numberOfOutputs)
    : numInputs(numberOfInputs), numOutputs(numberOfOutputs), autoMute(numberOfInputs, numberOfOutputs) {}

SignalProcessing::~SignalProcessing() = default;

void SignalProcessing::Configure(float newSamplerate, unsigned int blockSize, bool force) {
    LetOnlyOwnExceptionsPass([&] {
        if (downsampling) {
            ConfigureHalfRate(newSamplerate, blockSize);
            ReserveHostBlock(fullRateBlockSize);
        } else {
            ConfigureFullRate(newSamplerate, blockSize, force);
            ReserveHostBlock(maxBlockSize);
        }
        Denormals::TurnOff();
    });
}

void SignalProcessing::ConfigureHalfRate(float hostSamplerate, unsigned int hostBlockSize) {
    fullRateSamplerate = hostSamplerate;
    fullRateBlockSize = hostBlockSize;
    SetSamplerate(hostSamplerate * 0.5f);
    SetMaxBlockSize(hostBlockSize / 2);
    Clear();
    halfRateInput.Resize(numInputs, hostBlockSize / 2);
    halfRateOutput.Resize(numOutputs, hostBlockSize / 2);
    halfRateInput.Zero();  // memory that nobody has written to is not there yet
    halfRateOutput.Zero();
    if (!downsampler) downsampler = std::make_unique<MultiDownsampler>(numInputs, HalfRateTaps);
    if (!upsampler) upsampler = std::make_unique<MultiUpsampler>(numOutputs);
}

void SignalProcessing::ConfigureFullRate(float hostSamplerate, unsigned int hostBlockSize, bool force) {
    if (hostSamplerate == samplerate && hostBlockSize == maxBlockSize && !force) return;
    SetSamplerate(hostSamplerate == 0.0f ? DefaultSampleRate : hostSamplerate);
    SetMaxBlockSize(hostBlockSize == 0 ? DefaultBlockSize : hostBlockSize);
    Clear();
}

void SignalProcessing::ReserveHostBlock(unsigned long n) {
    Reserve(floatInput, numInputs, n);
    Reserve(floatOutput, numOutputs, n);
}

void SignalProcessing::SetSamplerate(float newSamplerate) {
    samplerate = newSamplerate;
    autoMute.SetSamplerate(newSamplerate);
}

void SignalProcessing::SetMaxBlockSize(unsigned int blockSize) { maxBlockSize = blockSize; }

void SignalProcessing::Clear() {}

void SignalProcessing::SetNumInputs(unsigned int n) {
    LetOnlyOwnExceptionsPass([&] {
        autoMute.SetNumInputsAndOutputs(n, numOutputs);
        if (n != numInputs) downsampler.reset();  // has one decimator an input; the next Configure makes a new one
        numInputs = n;
        Reserve(floatInput, numInputs, floatInput.GetNumSamples());
    });
}

void SignalProcessing::SetInletsAndOutletsStatus(const short* count) { autoMute.SetInletsAndOutletsStatus(count); }

void SignalProcessing::EnableAutoMute(bool enable) { autoMute.Enable(enable); }

void SignalProcessing::SetAutoMuteThreshold(float seconds) { autoMute.SetThreshold(seconds); }

void SignalProcessing::Mute(float** outs, unsigned long n) { ClearConnected(autoMute, outs, 0, numOutputs, n); }

void SignalProcessing::Mute(double** outs, unsigned long n) { ClearConnected(autoMute, outs, 0, numOutputs, n); }

void SignalProcessing::Bypass(float** outs, const float** ins, unsigned long n) {
    CopyActive(autoMute, outs, ins, numInputs, numOutputs, n);
}

void SignalProcessing::Bypass(double** outs, const double** ins, unsigned long n) {
    CopyActive(autoMute, outs, ins, numInputs, numOutputs, n);
}

void SignalProcessing::Perform(double** outs, const double** ins, unsigned long n, long mute, long bypass,
                               long disabled) {
    LetOnlyOwnExceptionsPass([&] {
        ReserveHostBlock(n);
        Narrow(floatInput.GetChannels(), ins, numInputs, n);
        const bool mayLeaveOutputsAlone = MayLeaveOutputsAlone(mute, bypass, disabled);
        float** const floatOuts = (IsInPlace() && !mayLeaveOutputsAlone ? floatInput : floatOutput).GetChannels();
        if (mayLeaveOutputsAlone) Narrow(floatOuts, outs, numOutputs, n);
        performInternal(floatOuts, AsInputs(floatInput), n, mute, bypass, disabled);
        Widen(outs, floatOuts, numOutputs, n);
    });
}

bool SignalProcessing::IsInPlace() const noexcept { return allowsInPlace && numInputs == numOutputs; }

bool SignalProcessing::MayLeaveOutputsAlone(long mute, long bypass, long disabled) const noexcept {
    return mute != 0 || bypass != 0 || disabled != 0 || !autoMute.AtLeastOneOutletConnected();
}

void SignalProcessing::performInternal(float** outs, const float** ins, unsigned long n, long mute, long bypass,
                                       long disabled) {
    autoMute.Process(ins, n);
    const bool isUnheard = numOutputs > 0 && !autoMute.AtLeastOneOutletConnected();
    if (isUnheard || mute == 1 || disabled == 1) {
        Mute(outs, n);
    } else if (bypass == 1) {
        Bypass(outs, ins, n);
    } else if (mute == 0 && bypass == 0 && disabled == 0) {
        Denormals::TurnOff();
        if (downsampling) {
            ProcessAtHalfRate(outs, ins, n);
        } else {
            Process(outs, ins, n);
        }
    }
}

bool SignalProcessing::IsReadyForHalfRate(unsigned long n) const {
    const auto fits = [n](const AudioBuffer& buffer, unsigned int numChannels) {
        return buffer.GetNumChannels() == numChannels && buffer.GetNumSamples() == n / 2;
    };
    return downsampler && upsampler && fits(halfRateInput, numInputs) && fits(halfRateOutput, numOutputs);
}

// A block of another length than the configured one would break the resamplers' run of samples: it is silent instead.
void SignalProcessing::ProcessAtHalfRate(float** outs, const float** ins, unsigned long n) {
    if (!IsReadyForHalfRate(n)) {
        Mute(outs, n);
        return;
    }
    const unsigned long half = n / 2;
    downsampler->Process(halfRateInput.GetChannels(), ins, static_cast<unsigned int>(half));
    Process(halfRateOutput.GetChannels(), AsInputs(halfRateInput), half);
    upsampler->Process(outs, const_cast<const float**>(halfRateOutput.GetChannels()), static_cast<unsigned int>(n));
}

String SignalProcessing::GetInputDescription(int i) const {
    if (i < 0 || static_cast<unsigned int>(i) >= numInputs) return String();
    return String("input #") + (static_cast<unsigned int>(i) + 1);
}

String SignalProcessing::GetOutputDescription(int i) const {
    if (i < 0 || static_cast<unsigned int>(i) >= numOutputs) return String("dumpout");
    return String("output #") + (static_cast<unsigned int>(i) + 1);
}

void SignalProcessing::PrintDspStatus(std::ostream& stream) const {
    stream << "samplerate           : " << StringFormatting::FrequencyToString(samplerate) << '\n';
    stream << "buffersize           : " << maxBlockSize << '\n';
    stream << "downsampling         : " << String(downsampling) << '\n';
    autoMute.PrintStatus(stream);
}

void SignalProcessing::PrintDspStatus(StringArray& lines) const {
    std::ostringstream text;
    text.imbue(std::locale::classic());  // numbers look the same whatever locale the host has set
    text.exceptions(std::ios::badbit);   // without memory lines would be missing, and nothing would say so
    PrintDspStatus(text);
    lines.SplitString(text, String("\n"));
}

}  // namespace velmodsp
