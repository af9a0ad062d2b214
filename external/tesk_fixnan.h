/// The object tesk.fixnan~: N channels in, N channels out, every NaN or infinite sample replaced. It only joins the
/// host to the engine, `velmodsp::MultiFixNaN`, which does all the repairing.
///
/// Creation arguments are attribute settings alone: `tesk.fixnan~ @numchannels 8 @mode givenvalue @replaceby 0.5`.
/// From left to right: numchannels signal inlets; numchannels signal outlets and the dump outlet.
///
/// Everything runs on the main thread but `tesk_fixnan_perform` and, through it, the listener.
#pragma once

// Headers of the library come before the host's, whose macros rename functions on Windows.
#include "dsp/VelmoDspMultiFixNaN.h"

#include "velmomax.h"

struct tesk_fixnan_t;

/// Posts the first bad sample of a channel in the name of the object that it reports for. Audio thread.
class MultiFixNaNListener : public velmodsp::FixNaNListener {
public:
    /// @param objectToReportFor not owned; outlives the listener; null to keep silent
    explicit MultiFixNaNListener(tesk_fixnan_t* objectToReportFor) : owner(objectToReportFor) {}

    void NaNOccured(const velmodsp::String& channelName) override;

private:
    tesk_fixnan_t* owner;
};

/// The object's record, allocated and zero-filled by the host.
struct tesk_fixnan_t {
    velmomax::_VelmoMspObject ob;   ///< must come first
    velmodsp::MultiFixNaN* engine;  ///< owned; null until the constructor has built it and after destruction
    MultiFixNaNListener* listener;  ///< owned; null as long as the engine is
    long numchannels;               ///< attribute: number of channels, 1 to 250; never changes once the engine is there
    float replaceby;                ///< attribute: what mode "givenvalue" writes for a bad sample
    t_symbol* mode;                 ///< attribute: as it was set; the engine takes unknown words for "lastvalue"
};
static_assert(std::is_standard_layout_v<tesk_fixnan_t>, "attributes address fields by their byte offset");

/// The class; null until it is registered.
extern t_class* tesk_fixnan_class;

/// Registers the class with the host. However often the host calls, it happens once.
void tesk_fixnan_setup() noexcept;

/// Makes an object from the host's creation arguments; null, after an error in the Max window, when it cannot be made.
tesk_fixnan_t* tesk_fixnan_new(t_symbol* s, short argc, t_atom* argv);

/// Releases what the object owns. Null and objects whose constructor gave up half-way are fine.
void tesk_fixnan_free(tesk_fixnan_t* x);

/// "assist": writes the help text of inlet (`io` 1) or outlet (`io` 2) `index`, counted from 0 at the left.
void tesk_fixnan_assist(tesk_fixnan_t* x, void* box, long io, long index, char* text);

/// "clear": lets every channel report its next bad sample again.
void tesk_fixnan_clear(tesk_fixnan_t* x);

/// "postdspstate": posts the engine's sample rate, block size and connections, line by line.
void post_dsp_inlets_outlets_status(tesk_fixnan_t* x);

/// "dsp64": configures the engine and puts the object into the host's signal chain. `count` holds the number of
/// connections of every inlet, then of every outlet. Main thread while audio is stopped.
void tesk_fixnan_dsp(tesk_fixnan_t* x, t_object* dsp64, short* count, double samplerate, long maxvectorsize,
                     long flags);

/// Repairs one block of `sampleframes` samples. Audio thread, real-time safe: nothing is allocated for blocks up to the
/// size announced by "dsp64".
void tesk_fixnan_perform(tesk_fixnan_t* x, t_object* dsp64, double** ins, long numins, double** outs, long numouts,
                         long sampleframes, long flags, void* userparam);

/// Setter of "numchannels", "replaceby" and "mode". Only the first atom counts. May run while audio does.
t_max_err tesk_fixnan_set_attr(tesk_fixnan_t* x, void* attr, long argc, t_atom* argv);
