#pragma once

#include <memory>
#include <vector>

#include "ext.h"
#include "ext_obex.h"
#include "z_dsp.h"

namespace velmohost {

class Box;

/// The DSP chain of one box: asks the object through "dsp64" for its perform routines, and runs them over signal
/// vectors.
///
///     DspChain chain;                                            // main thread
///     chain.Start(box, 48000.0, 64, {true, true}, {true, true});
///     std::copy_n(samples, 64, chain.InletSamples(0));           // the same for the other inlets
///     chain.ProcessVectors(1);                                   // audio thread
///     const double* repaired = chain.OutletSamples(0);
///     chain.Stop();
///
/// Several vectors can be processed at once: the buffers then hold them one behind the other.
/// An object that does not ask for separate buffers (`Z_NO_INPLACE`) gets its outlet k in the memory of its inlet k, on
/// purpose, so that one which cannot stand it is found out. Hence every inlet is filled anew before each call.
class DspChain {
public:
    DspChain();
    /// Stops the chain.
    ~DspChain();
    DspChain(const DspChain&) = delete;
    DspChain& operator=(const DspChain&) = delete;

    /// Turns audio on and has the object build its part of the chain. Main thread; allocates.
    /// @param box must outlive the chain's run; a box whose object has no "dsp64" method yields silence
    /// @param samplerate in Hz, above 0
    /// @param vectorSize samples of a vector, 1 to `kMaxVectorSize`
    /// @param inletsConnected, outletsConnected one entry per signal inlet / outlet; missing entries mean unconnected
    /// @param maxVectors the most vectors of one `ProcessVectors` call, at least 1
    void Start(Box& box, double samplerate, long vectorSize, const std::vector<bool>& inletsConnected,
               const std::vector<bool>& outletsConnected, unsigned long maxVectors = 1);

    /// Turns audio off and forgets the object. Main thread while no vector is being processed; harmless when stopped.
    void Stop();

    /// Where the samples of a signal inlet are to be put, room for `maxVectors` vectors; null when it is unconnected.
    double* InletSamples(unsigned inlet) noexcept;

    /// The samples that left a signal outlet, connected or not.
    const double* OutletSamples(unsigned outlet) const noexcept;

    /// Runs the object over the next `numVectors` vectors. What no perform routine has written is silence, and so is
    /// everything while the object is disabled. Audio thread. Real-time safe as far as the object is: no allocation, no
    /// lock. The processor's floating-point settings are the caller's again afterwards.
    void ProcessVectors(unsigned long numVectors) noexcept;

    /// Adds a perform routine behind those already there. Called by the object from within its "dsp64" method.
    void Add(t_object* object, t_perfroutine64 perform, long flags, void* userParameter);

    /// Takes `object` out of every chain that runs it. Main thread while no vector is being processed.
    static void RemoveFromAll(const t_object* object);

private:
    struct Entry {
        t_object* object;
        t_perfroutine64 perform;
        long flags;
        void* userParameter;
    };

    void LayOutBuffers(const std::vector<bool>& inletsConnected);
    void AskObject(const std::vector<bool>& inletsConnected, const std::vector<bool>& outletsConnected);
    void PointAtVector(unsigned long vectorIndex) noexcept;
    bool RunEntries() noexcept;

    t_object* object = nullptr;     // the box's object while started
    t_object* dspObject = nullptr;  // what the object knows as the chain ("dsp64")
    double samplerate = 0.0;
    long vectorSize = 0;
    unsigned long maxVectors = 0;
    unsigned numInlets = 0, numOutlets = 0;  // signal inlets and outlets
    std::vector<Entry> entries;
    std::vector<double> samples;  // of all connected inlets, then of all outlets with memory of their own
    std::vector<double> zeros;    // one vector for all unconnected inlets
    std::vector<double*> inletBase, outletBase;  // first vector of each; null for an unconnected inlet
    std::vector<double*> ins, outs;              // of the vector being processed
};

}  // namespace velmohost
