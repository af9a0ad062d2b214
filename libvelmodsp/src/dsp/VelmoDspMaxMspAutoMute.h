#pragma once

#include <cstdint>
#include <iosfwd>

#include "dsp/VelmoDspSharedWord.h"
#include "math/VelmoDspVector.h"

namespace velmodsp {

/// Knows which inlets and outlets of a signal object have a patch cord, and, once enabled, which inlets still carry
/// signal: an inlet that gave nothing but zeros for a threshold time counts as inactive until its next sample that is
/// not zero. A NaN counts as silence, an infinity as signal.
///
///     MaxMspAutoMute autoMute(2, 2);
///     autoMute.SetInletsAndOutletsStatus(count);   // audio stopped: the host's connection flags
///     autoMute.SetThreshold(10.0f);                // main thread: enable, inactive after ten seconds
///     autoMute.Process(ins, n);                    // audio thread, once per block
///     bool active = autoMute.IsChannelConnected(0);  // any thread
///
/// Threads: the operations that resize or that take connection flags or a sample rate need the audio stopped; the
/// others say where they may run.
class MaxMspAutoMute {
public:
    /// Nothing connected, 44.1 kHz, disabled, threshold 20 seconds.
    /// @throws Exception when memory runs out
    MaxMspAutoMute(unsigned int numInputs, unsigned int numOutputs);

    /// Changes the numbers of inlets and outlets; those that are new start unconnected and inactive.
    /// Audio stopped; allocates.
    /// @throws Exception when memory runs out
    void SetNumInputsAndOutputs(unsigned int numInputs, unsigned int numOutputs);

    /// Takes the host's connection flags: first one per inlet, then one per outlet, above 0 where a patch cord ends.
    /// @param count as many flags as inlets and outlets together; not kept
    /// Audio stopped.
    void SetInletsAndOutletsStatus(const short* count);

    /// Sample rate in Hz, by which the threshold becomes a number of samples. A rate other than the one before makes
    /// every inlet active again. Audio stopped.
    void SetSamplerate(float newSamplerate);

    /// Updates which inlets are active from the next `n` samples of every inlet, `ins[k][0]` to `ins[k][n - 1]`.
    /// Audio thread; real-time safe: at most one pass over the connected inlets, none while disabled.
    void Process(const float** ins, unsigned long n) noexcept;

    /// While disabled, every connected inlet is active. Any thread; real-time safe.
    void Enable(bool shouldBeEnabled) noexcept { enabled.Store(shouldBeEnabled); }
    bool IsEnabled() const noexcept { return enabled.Load(); }

    /// Silence after which an inlet becomes inactive, in seconds; kept within 1 to 500. Enables auto-mute, except that
    /// 0, a negative number or NaN disables it and leaves the threshold as it was. Main thread.
    void SetThreshold(float seconds) noexcept;
    float GetThreshold() const noexcept { return threshold.Load(); }
    /// The threshold times the sample rate, truncated. Any thread; real-time safe.
    std::uint64_t GetThresholdInSamples() const noexcept { return thresholdInSamples.Load(); }

    /// Whether inlet or outlet `k` has a patch cord; false past the last one. Any thread; real-time safe.
    bool IsInletConnected(unsigned int k) const noexcept { return k < inletFlags.Size() && inletFlags[k] > 0; }
    bool IsOutletConnected(unsigned int k) const noexcept { return k < outletFlags.Size() && outletFlags[k] > 0; }

    /// Whether inlet `k` is connected and was active after the last block. Any thread; real-time safe.
    bool IsChannelConnected(unsigned int k) const noexcept { return IsInletConnected(k) && activeFlags[k].Load() > 0; }

    /// Whether any outlet has a patch cord. Any thread; real-time safe.
    bool AtLeastOneOutletConnected() const noexcept { return outletConnected; }

    /// Number of inlets that were active after the last block. Any thread; real-time safe.
    unsigned int GetNumActiveInlets() const noexcept;

    /// Writes what is connected and active, one item a line, for people to read.
    ///
    /// The line "inactivity period" appears when something is connected but no connected inlet is active. It gives the
    /// time since the last of them fell silent, in whole milliseconds; since counting stops at the threshold, the real
    /// time may be longer. Main thread.
    void PrintStatus(std::ostream& stream) const;

private:
    void UpdateActivity(unsigned int k, const float* in, unsigned long n) noexcept;
    void UpdateThresholdInSamples() noexcept;
    void UpdateOutletConnected() noexcept;
    unsigned int NumInlets() const noexcept { return static_cast<unsigned int>(inletFlags.Size()); }
    bool IsEveryConnectedInletInactive() const noexcept;
    std::uint64_t SilentMilliseconds() const noexcept;

    // Written while audio is stopped, read by any thread.
    Vector<short> inletFlags;
    Vector<short> outletFlags;
    bool outletConnected = false;  // one of them, at least
    // Written by the audio thread, read by any.
    Vector<SharedWord<short>> activeFlags;
    Vector<SharedWord<std::uint64_t>> silentSamples;

    float samplerate;  // Hz; written while audio is stopped
    // Written by the main thread, read by any.
    SharedWord<bool> enabled;
    SharedWord<float> threshold;  // seconds
    SharedWord<std::uint64_t> thresholdInSamples;
};

}  // namespace velmodsp
