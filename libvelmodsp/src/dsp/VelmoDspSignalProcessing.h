#pragma once

#include <iosfwd>
#include <memory>

#include "dsp/VelmoDspMaxMspAutoMute.h"
#include "text/VelmoDspString.h"
#include "text/VelmoDspStringArray.h"
#include "utils/VelmoDspAudioBuffer.h"
#include "utils/VelmoDspCompilerChecks.h"

namespace velmodsp {

class MultiDownsampler;
class MultiUpsampler;

/// Base of every signal processor: a fixed number of outputs, a number of inputs, a sample rate and a block size. It
/// takes the host's 64-bit blocks, runs the processor on 32-bit floats, and looks after everything that is not the
/// processor's own concern: connection flags, auto-mute, mute and bypass, denormals, running at half the sample rate.
///
/// Derive from it and override `Process`. An object of the host then does
///
///     engine.Configure(48000.0f, 64, true);                   // main thread, audio about to start
///     engine.SetInletsAndOutletsStatus(count);
///     engine.Perform(outs, ins, 64, mute, bypass, disabled);  // audio thread, once per block
///
/// Shapes: `ins[k]` is input k, `outs[k]` is output k, each of `n` samples. Sample rates are in Hz.
///
/// Threads: `Perform`, `performInternal`, `Process`, `Mute` and `Bypass` run on the audio thread and are real-time
/// safe; `Perform` allocates only for a block longer than any that `Configure` was told of. Everything else runs on the
/// main thread; what changes sizes, connection flags or rates does so while audio is stopped.
///
/// Errors: an `Exception` passes through `Configure`, `SetNumInputs` and `Perform` to the caller; anything else that is
/// thrown below them ends the process.
class SignalProcessing {
public:
    static constexpr float DefaultSampleRate = 44100.0f;
    static constexpr unsigned int DefaultBlockSize = 512;
    static constexpr unsigned int MaxNumberOfChannels = 1024;

    /// 44.1 kHz, blocks of 512, nothing connected, auto-mute and half rate off.
    /// @throws Exception when memory runs out
    SignalProcessing(unsigned int numberOfInputs, unsigned int numberOfOutputs);
    virtual ~SignalProcessing();
    SignalProcessing(const SignalProcessing&) = delete;
    SignalProcessing& operator=(const SignalProcessing&) = delete;

    /// The processor itself: `n` samples from every input to every output, at the rate of `GetSamplerate`. At half rate
    /// the host's n samples are n / 2 here. Called by `Perform`, no output shares a buffer with an input, save as
    /// `AllowInPlace` tells.
    virtual void Process(float** outs, const float** ins, unsigned long n) = 0;

    /// Copies every input that is connected and active to the output of the same number; clears the connected outputs
    /// that get no such input.
    virtual void Bypass(float** outs, const float** ins, unsigned long n);
    virtual void Bypass(double** outs, const double** ins, unsigned long n);

    /// Clears the connected outputs; the others are left alone.
    virtual void Mute(float** outs, unsigned long n);
    virtual void Mute(double** outs, unsigned long n);

    /// Sets the host's sample rate and longest block, calls `Clear`, and makes room for blocks of that length; 0 stands
    /// for 44100 Hz and for 512 samples. Unless `force` is set, nothing changes when both are as before. At half rate
    /// it always reconfigures, takes 0 as it is, and the processor sees half the rate and half the block.
    /// @throws Exception when memory runs out
    virtual void Configure(float newSamplerate, unsigned int blockSize, bool force);

    /// Stores the rate at which the processor runs.
    virtual void SetSamplerate(float newSamplerate);

    /// Stores the length of the longest block that the processor gets.
    virtual void SetMaxBlockSize(unsigned int blockSize);

    /// Forgets the samples that passed, not the settings. Does nothing here; for processors with a memory.
    virtual void Clear();

    /// Changes the number of inputs; those that are new start unconnected. At half rate outputs stay silent until the
    /// next `Configure`.
    /// @throws Exception when memory runs out
    virtual void SetNumInputs(unsigned int n);

    /// What input `i` is, for people: "input #1" for 0; empty when there is no such input.
    virtual String GetInputDescription(int i) const;

    /// What output `i` is, for people: "output #1" for 0; "dumpout" when there is no such signal output.
    virtual String GetOutputDescription(int i) const;

    /// Takes the host's connection flags: one per input, then one per output, above 0 where a patch cord ends.
    /// @param count as many flags as inputs and outputs together; not kept
    virtual void SetInletsAndOutletsStatus(const short* count);

    /// See `MaxMspAutoMute::Enable` and `SetThreshold`. Allowed while audio runs.
    virtual void EnableAutoMute(bool enable);
    virtual void SetAutoMuteThreshold(float seconds);

    /// One block in 32 bits: `Perform` without the conversions, for processors inside other processors. Does the first
    /// of these that applies, after updating the auto-mute:
    /// no output connected, `mute` = 1 or `disabled` = 1: `Mute`; `bypass` = 1: `Bypass`; any other value of one of the
    /// three but 0: nothing, the outputs stay as they are; else `Process`, at half rate if that is on.
    virtual void performInternal(float** outs, const float** ins, unsigned long n, long mute, long bypass,
                                 long disabled);

    /// One block of the host's: narrows the inputs to 32 bits, where a magnitude beyond their range becomes an
    /// infinity, runs `performInternal`, and widens its outputs into `outs`. An output that `performInternal` leaves
    /// alone keeps its samples, rounded to 32 bits. `outs` and `ins` may share buffers.
    void Perform(double** outs, const double** ins, unsigned long n, long mute, long bypass, long disabled);

    /// Writes sample rate, block size, connections and auto-mute, one item a line, for people to read. Allowed while
    /// audio runs.
    void PrintDspStatus(std::ostream& stream) const;

    /// The same as one string a line, which replace what `lines` held.
    void PrintDspStatus(StringArray& lines) const;

    /// Whether input `k` has a patch cord; false past the last one. Any thread; real-time safe.
    bool IsInletConnected(unsigned int k) const noexcept { return autoMute.IsInletConnected(k); }

    unsigned int GetNumInputs() const noexcept { return numInputs; }
    unsigned int GetNumOutputs() const noexcept { return numOutputs; }

    /// The rate at which the processor runs: the host's, or half of it at half rate.
    float GetSamplerate() const noexcept { return samplerate; }
    /// The longest block the processor gets: the host's, or half of it at half rate.
    unsigned int GetMaxBlockSize() const noexcept { return maxBlockSize; }

    /// Runs the processor at half the host's sample rate, which halves its work and its bandwidth and delays the signal
    /// by 10 samples of the host. Audio stopped; call `Configure` after
    /// it: until then the outputs are silent.
    void SetDownsampling(bool on) noexcept { downsampling = on; }
    bool IsDownsampling() const noexcept { return downsampling; }

    MaxMspAutoMute& GetAutoMute() noexcept { return autoMute; }
    const MaxMspAutoMute& GetAutoMute() const noexcept { return autoMute; }

private:
    void ConfigureHalfRate(float hostSamplerate, unsigned int hostBlockSize);
    void ConfigureFullRate(float hostSamplerate, unsigned int hostBlockSize, bool force);
    void ReserveHostBlock(unsigned long n);
    bool MayLeaveOutputsAlone(long mute, long bypass, long disabled) const noexcept;
    bool IsInPlace() const noexcept;
    bool IsReadyForHalfRate(unsigned long n) const;
    void ProcessAtHalfRate(float** outs, const float** ins, unsigned long n);

    unsigned int numInputs;
    unsigned int numOutputs;
    bool allowsInPlace = false;
    MaxMspAutoMute autoMute;
    float samplerate = DefaultSampleRate;
    unsigned int maxBlockSize = DefaultBlockSize;
    bool downsampling = false;
    float fullRateSamplerate = DefaultSampleRate;       // the host's, while at half rate
    unsigned int fullRateBlockSize = DefaultBlockSize;  // the host's, while at half rate
    std::unique_ptr<MultiDownsampler> downsampler;      // at half rate only
    std::unique_ptr<MultiUpsampler> upsampler;          // at half rate only
    AudioBuffer halfRateInput{0, 0, true};
    AudioBuffer halfRateOutput{0, 0, true};
    AudioBuffer floatInput{0, 0, true};  // the host's block in 32 bits
    AudioBuffer floatOutput{0, 0, true};

protected:
    /// Lets `Perform` hand output k over in the buffer of input k, which spares a second buffer and the traffic to it.
    /// For the constructor of a processor that has read sample i of input k, and of no other input, by the time it
    /// writes sample i of output k. `Process` still gets buffers apart at half rate and while there are more or fewer
    /// inputs than outputs.
    void AllowInPlace() noexcept { allowsInPlace = true; }

    /// A buffer for a derived processor's own use, which sizes it when it is configured; unused here.
    AudioBuffer workBuffer{0, 0, true};
};

}  // namespace velmodsp
