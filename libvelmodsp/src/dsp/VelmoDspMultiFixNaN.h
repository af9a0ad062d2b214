#pragma once

#include "dsp/VelmoDspFixNaN.h"

namespace velmodsp {

/// Repairs NaN and infinite samples in any number of channels, each by a `FixNaN` of its own, input k into output k.
/// The channels are labelled "Channel #1", "Channel #2" and so on, share mode and replacement value, and report their
/// first bad samples independently of each other.
///
///     MultiFixNaN engine(2);                                  // main thread
///     engine.AddListener(&listener);
///     engine.SetMode("givenvalue");
///     engine.Configure(48000.0f, 64, true);                   // audio about to start
///     engine.SetInletsAndOutletsStatus(count);
///     engine.Perform(outs, ins, 64, mute, bypass, disabled);  // audio thread, once per block
class MultiFixNaN : public SignalProcessing {
public:
    /// @param numberOfChannels inputs and outputs; fixed for the engine's life; 0 is allowed
    /// @throws Exception or std::bad_alloc when memory runs out
    explicit MultiFixNaN(unsigned int numberOfChannels);
    ~MultiFixNaN() override;

    /// Repairs every connected input into its output, which may be the same buffer, and clears the outputs of the
    /// others. Audio thread; real-time safe as far as the listeners are; ends the process when one of them throws.
    void Process(float** outs, const float** ins, unsigned long n) override;

    /// Lets every channel report its next bad sample again; nothing else changes. Any thread; real-time safe.
    void Reset() noexcept;

    /// Registers a listener, which is not owned and must be removed before it is destroyed, with every channel. Null
    /// and one that is registered already change nothing. Audio stopped; allocates.
    /// @throws Exception when memory runs out
    void AddListener(FixNaNListener* listener);

    /// Removes a listener from every channel that has it. Audio stopped.
    void RemoveListener(FixNaNListener* listener);

    /// What every channel writes for a bad sample in mode "givenvalue". Any thread; real-time safe.
    void SetReplacementValue(float value) noexcept;

    /// Sets every channel's mode: "givenvalue", and "lastvalue" or any other text. Any thread but the audio thread.
    void SetMode(const String& text);

    /// As given to the constructor. Any thread; real-time safe.
    unsigned int GetNumChannels() const noexcept { return numChannels; }

private:
    void DeleteChannels() noexcept;

    const unsigned int numChannels;
    Vector<FixNaN*> channels;  // owned
};

}  // namespace velmodsp
