#pragma once

#include "ext.h"
#include "ext_obex.h"

namespace velmohost {

class DspChain;

/// The object that "dsp64" hands to an external as the chain: it answers "dsp_add64", "getnuminputchannels" and
/// "getnumoutputchannels". Freed with `object_free`; must not outlive `chain`. Main thread.
t_object* NewDspObject(DspChain& chain);

/// The chain behind such an object, null for any other object. Main thread.
DspChain* GetDspChain(t_object* dspObject);

}  // namespace velmohost
