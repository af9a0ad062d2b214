#include "dsp/VelmoDspFixNaN.h"

#include <algorithm>
#include <map>

namespace velmodsp {

FixNaN::FixNaN() : SignalProcessing(1, 1) { AllowInPlace(); }

void FixNaN::Process(float** outs, const float** ins, unsigned long n) {
    if (IsInletConnected(0)) {
        Process(outs[0], ins[0], n);
    } else {
        Mute(outs, n);
    }
}

// `in` begins with a bad sample. Whether another is to be reported is asked once for each: asked again it could have
// become so meanwhile, before a sample that is finite.
void FixNaN::RepairAndReport(Mode blockMode, float* out, const float* in, unsigned long n) {
    unsigned long i = 0;
    do {
        Report();
        Repair(blockMode, out + i, in + i, 1);
        ++i;
        if (!notifyPending.Load()) {
            Repair(blockMode, out + i, in + i, n - i);
            return;
        }
        i += PassFinite(blockMode, out + i, in + i, n - i);
    } while (i < n);
}

// Disarms first: a `Rearm` that comes while the listeners are told must not be lost.
void FixNaN::Report() {
    notifyPending.Store(false);
    for (FixNaNListener* listener : listeners) listener->NaNOccured(name);
}

void FixNaN::SetMode(const String& text) {
    static const std::map<String, Mode> modes{{"givenvalue", GivenValue}, {"lastvalue", LastValue}};
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
