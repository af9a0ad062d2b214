#pragma once

#include "dsp/VelmoDspFixNaNListener.h"
#include "dsp/VelmoDspSampleKernels.h"
#include "dsp/VelmoDspSharedWord.h"
#include "dsp/VelmoDspSignalProcessing.h"
#include "math/VelmoDspVector.h"
#include "text/VelmoDspString.h"

namespace velmodsp {

/// Repairs one channel: every sample that is NaN or infinite is replaced, every other one, subnormals and both zeros
/// included, passes bit for bit. The first bad sample is reported once to the listeners, until `Rearm`. The result does
/// not depend on how the signal is cut into blocks.
///
///     FixNaN repair;
///     repair.SetMode("givenvalue");        // any thread
///     repair.SetReplacementValue(0.0f);    // any thread
///     repair.Process(block, block, 64);    // audio thread, in place
class FixNaN : public SignalProcessing {
public:
    enum Mode : unsigned int {
        GivenValue = 0,  ///< a bad sample becomes the replacement value
        LastValue = 1    ///< a bad sample becomes the last finite sample that passed in this mode, 0 before the first
    };

    /// One input, one output, mode `LastValue`, replacement value 0, an empty name, no listeners, armed.
    FixNaN();

    /// Repairs input 0 into output 0, which may be the same buffer; mutes the output while the inlet is unconnected.
    /// Audio thread; real-time safe as far as the listeners are.
    void Process(float** outs, const float** ins, unsigned long n) override;

    /// Repairs `in[0]` to `in[n - 1]` into `out`, which may be the same buffer, whatever the connection flags say. A
    /// mode set meanwhile counts from the next call. So does what another thread sets, at the latest; what a listener
    /// sets counts at once, a replacement value from the bad sample that it is told of. Audio thread; real-time safe as
    /// far as the listeners are: it throws only what a listener throws.
    void Process(float* out, const float* in, unsigned long n);

    /// Chooses the mode by its text: "givenvalue", and "lastvalue" or any other text. Any thread but the audio thread
    /// (it allocates).
    void SetMode(const String& text);

    /// What `GivenValue` writes for a bad sample; NaN and infinities are written as they are. Any thread; real-time
    /// safe.
    void SetReplacementValue(float value) noexcept { replacementValue.Store(value); }

    /// Lets the next bad sample be reported again. Any thread; real-time safe. A call during a report counts for the
    /// sample after it.
    void Rearm() noexcept { notifyPending.Store(true); }

    /// The channel's label, which listeners are given. Audio stopped.
    void SetName(const String& newName) { name = newName; }

    /// Appends a listener, which is not owned; null and one that is registered already are passed over. Listeners are
    /// called in the order of their registration. Audio stopped; allocates.
    /// @throws Exception when memory runs out
    void AddListener(FixNaNListener* listener);

    /// Takes a listener out; one that is not registered is passed over. Audio stopped.
    void RemoveListener(FixNaNListener* listener);

private:
    unsigned long PassFinite(Mode blockMode, float* out, const float* in, unsigned long n);
    void Repair(Mode blockMode, float* out, const float* in, unsigned long n);
    void RepairAndReport(Mode blockMode, float* out, const float* in, unsigned long n);
    void Report();

    SharedWord<float> replacementValue{0.0f};  // written by any thread
    float lastValue = 0.0f;                    // audio thread only
    SharedWord<Mode> mode{LastValue};          // written by any thread
    String name;                               // written while audio is stopped
    Vector<FixNaNListener*> listeners;         // written while audio is stopped
    SharedWord<bool> notifyPending{true};      // set by any thread, cleared by the audio thread
};

// What follows is all that most blocks need, and in the header because in short blocks of many channels a call shows.

inline void FixNaN::Process(float* out, const float* in, unsigned long n) {
    const Mode blockMode = mode.Load();
    if (blockMode != GivenValue && blockMode != LastValue) return;
    if (!notifyPending.Load()) {
        Repair(blockMode, out, in, n);
    } else {
        const unsigned long passed = PassFinite(blockMode, out, in, n);
        if (passed < n) RepairAndReport(blockMode, out + passed, in + passed, n - passed);
    }
}

inline unsigned long FixNaN::PassFinite(Mode blockMode, float* out, const float* in, unsigned long n) {
    const unsigned long passed = SampleKernels::Active().passFinite(out, in, n);
    if (passed > 0 && blockMode == LastValue) lastValue = out[passed - 1];
    return passed;
}

inline void FixNaN::Repair(Mode blockMode, float* out, const float* in, unsigned long n) {
    const SampleKernels& kernels = SampleKernels::Active();
    if (blockMode == GivenValue) {
        kernels.replaceByGivenValue(out, in, n, replacementValue.Load());
    } else {
        lastValue = kernels.replaceByLastValue(out, in, n, lastValue);
    }
}

}  // namespace velmodsp
