#include "dsp/VelmoDspFixNaN.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <map>

namespace velmodsp {

namespace {

/// True unless the exponent's bits are all set, which marks NaN and infinity. A test on the bits holds whatever a
/// compiler assumes about NaN and costs the same for subnormals.
bool IsFinite(float x) {
    constexpr std::uint32_t ExponentBits = 0x7f800000u;
    return (std::bit_cast<std::uint32_t>(x) & ExponentBits) != ExponentBits;
}

}  // namespace

FixNaN::FixNaN() : SignalProcessing(1, 1) {}

void FixNaN::Process(float** outs, const float** ins, unsigned long n) {
    if (IsInletConnected(0)) {
        Process(outs[0], ins[0], n);
    } else {
        Mute(outs, n);
    }
}

void FixNaN::Process(float* out, const float* in, unsigned long n) {
    switch (mode.Load()) {
        case GivenValue:
            ReplaceByGivenValue(out, in, n);
            break;
        case LastValue:
            ReplaceByLastValue(out, in, n);
            break;
    }
}

void FixNaN::ReplaceByGivenValue(float* out, const float* in, unsigned long n) {
    for (unsigned long i = 0; i < n; ++i) {
        const float x = in[i];
        if (IsFinite(x)) {
            out[i] = x;
        } else {
            Report();
            out[i] = replacementValue.Load();
        }
    }
}

void FixNaN::ReplaceByLastValue(float* out, const float* in, unsigned long n) {
    float last = lastValue;  // in a register: `out` might alias the field
    for (unsigned long i = 0; i < n; ++i) {
        const float x = in[i];
        if (IsFinite(x)) {
            last = x;
        } else {
            lastValue = last;  // so that a listener that throws loses nothing
            Report();
        }
        out[i] = last;
    }
    lastValue = last;
}

// Disarms first: a `Rearm` that comes while the listeners are told must not be lost.
void FixNaN::Report() {
    if (!notifyPending.Load()) return;
    notifyPending.Store(false);
    for (FixNaNListener* listener : listeners) listener->NaNOccured(name);
}

void FixNaN::SetMode(const String& text) {
    const std::map<String, Mode> modes{{"givenvalue", GivenValue}, {"lastvalue", LastValue}};
    const auto found = modes.find(text);
    mode.Store(found == modes.end() ? LastValue : found->second);
}

void FixNaN::AddListener(FixNaNListener* listener) {
    const bool registered = std::find(listeners.begin(), listeners.end(), listener) != listeners.end();
    if (listener != nullptr && !registered) listeners.PushBack(listener);
}

void FixNaN::RemoveListener(FixNaNListener* listener) {
    const auto found = std::find(listeners.begin(), listeners.end(), listener);
    if (found == listeners.end()) return;
    std::move(found + 1, listeners.end(), found);
    listeners.Resize(listeners.Size() - 1);
}

}  // namespace velmodsp
