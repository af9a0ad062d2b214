#include "dsp/VelmoDspMaxMspAutoMute.h"

#include <algorithm>
#include <limits>
#include <ostream>

#include "dsp/VelmoDspSignalProcessing.h"

namespace velmodsp {

namespace {

constexpr float MinThresholdSeconds = 1.0f;
constexpr float MaxThresholdSeconds = 500.0f;
constexpr float DefaultThresholdSeconds = 20.0f;

bool IsConnected(short flag) { return flag > 0; }

/// NaN is neither above nor below 0 and so counts as silence. The loop has no early way out: it vectorises.
bool CarriesSignal(const float* in, unsigned long n) {
    int signal = 0;
    for (unsigned long i = 0; i < n; ++i) {
        signal |= in[i] > 0.0f;
        signal |= in[i] < 0.0f;
    }
    return signal != 0;
}

}  // namespace

MaxMspAutoMute::MaxMspAutoMute(unsigned int numInputs, unsigned int numOutputs)
    : samplerate(SignalProcessing::DefaultSampleRate), enabled(false), threshold(DefaultThresholdSeconds) {
    UpdateThresholdInSamples();
    SetNumInputsAndOutputs(numInputs, numOutputs);
}

void MaxMspAutoMute::SetNumInputsAndOutputs(unsigned int numInputs, unsigned int numOutputs) {
    ResizeVector(activeFlags, numInputs);
    ResizeVector(silentSamples, numInputs);
    ResizeVector(outletFlags, numOutputs);
    ResizeVector(inletFlags, numInputs);  // last: its size is the number of inlets, should one of the others fail
    UpdateOutletConnected();
}

void MaxMspAutoMute::SetInletsAndOutletsStatus(const short* count) {
    std::copy_n(count, inletFlags.Size(), inletFlags.begin());
    std::copy_n(count + inletFlags.Size(), outletFlags.Size(), outletFlags.begin());
    UpdateOutletConnected();
}

void MaxMspAutoMute::SetSamplerate(float newSamplerate) {
    if (newSamplerate == samplerate) return;
    samplerate = newSamplerate;
    UpdateThresholdInSamples();
    for (unsigned int k = 0; k < NumInlets(); ++k) {
        silentSamples[k].Store(0);
        activeFlags[k].Store(1);
    }
}

void MaxMspAutoMute::Process(const float** ins, unsigned long n) noexcept {
    const unsigned int numInlets = NumInlets();
    if (!enabled.Load()) {
        const short* connected = inletFlags.Data();
        SharedWord<short>* active = activeFlags.Data();
        for (unsigned int k = 0; k < numInlets; ++k) active[k].Store(connected[k]);
        return;
    }
    for (unsigned int k = 0; k < numInlets; ++k) {
        if (!IsConnected(inletFlags[k])) {
            activeFlags[k].Store(0);
        } else {
            UpdateActivity(k, ins[k], n);
        }
    }
}

void MaxMspAutoMute::UpdateActivity(unsigned int k, const float* in, unsigned long n) noexcept {
    std::uint64_t silent = silentSamples[k].Load();
    if (CarriesSignal(in, n)) {
        silent = 0;
        activeFlags[k].Store(1);
    } else {
        silent += n;
    }
    const std::uint64_t limit = thresholdInSamples.Load();
    if (silent >= limit) {
        silent = limit;
        activeFlags[k].Store(0);
    }
    silentSamples[k].Store(silent);
}

void MaxMspAutoMute::SetThreshold(float seconds) noexcept {
    const bool enable = seconds > 0.0f;
    if (enable) {
        threshold.Store(std::clamp(seconds, MinThresholdSeconds, MaxThresholdSeconds));
        UpdateThresholdInSamples();
    }
    enabled.Store(enable);
}

void MaxMspAutoMute::UpdateThresholdInSamples() noexcept {
    constexpr auto most = std::numeric_limits<std::uint64_t>::max();
    const float samples = threshold.Load() * samplerate;
    // A product that no integer can hold (a sample rate that is negative, NaN or absurdly high) must not be converted.
    if (!(samples > 0.0f)) {
        thresholdInSamples.Store(0);
    } else {
        thresholdInSamples.Store(samples < static_cast<float>(most) ? static_cast<std::uint64_t>(samples) : most);
    }
}

void MaxMspAutoMute::UpdateOutletConnected() noexcept {
    outletConnected = std::any_of(outletFlags.begin(), outletFlags.end(), IsConnected);
}

unsigned int MaxMspAutoMute::GetNumActiveInlets() const noexcept {
    return static_cast<unsigned int>(
        std::count_if(activeFlags.begin(), activeFlags.end(), [](const auto& flag) { return flag.Load() > 0; }));
}

bool MaxMspAutoMute::IsEveryConnectedInletInactive() const noexcept {
    bool somethingConnected = false;
    for (unsigned int k = 0; k < NumInlets(); ++k) {
        if (IsChannelConnected(k)) return false;
        somethingConnected |= IsConnected(inletFlags[k]);
    }
    return somethingConnected;
}

std::uint64_t MaxMspAutoMute::SilentMilliseconds() const noexcept {
    std::uint64_t shortest = thresholdInSamples.Load();
    for (unsigned int k = 0; k < NumInlets(); ++k) {
        if (IsConnected(inletFlags[k])) shortest = std::min(shortest, silentSamples[k].Load());
    }
    // At 0 Hz the threshold is 0 samples and no time passes.
    return shortest == 0 ? 0 : static_cast<std::uint64_t>(1000.0 * static_cast<double>(shortest) / samplerate);
}

void MaxMspAutoMute::PrintStatus(std::ostream& stream) const {
    const auto numConnected = [](const Vector<short>& flags) {
        return std::count_if(flags.begin(), flags.end(), IsConnected);
    };
    stream << "numinputs connected  : " << numConnected(inletFlags) << " / " << inletFlags.Size() << '\n';
    if (enabled.Load()) {
        stream << "numinputs active     : " << GetNumActiveInlets() << " / " << inletFlags.Size() << '\n';
        stream << "auto-mute threshold  : " << threshold.Load() << " sec\n";
        if (IsEveryConnectedInletInactive()) stream << "inactivity period   >= " << SilentMilliseconds() << " msec\n";
    } else {
        stream << "auto-mute is disabled\n";
    }
    stream << "numoutputs connected : " << numConnected(outletFlags) << " / " << outletFlags.Size() << '\n';
}

}  // namespace velmodsp
