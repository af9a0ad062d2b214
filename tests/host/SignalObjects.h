#pragma once

#include <thread>

#include "ext.h"
#include "ext_obex.h"
#include "z_dsp.h"

/// Two channels that leave crossed: outlet 0 gets inlet 1, then outlet 1 gets inlet 0. That goes wrong in shared
/// buffers, so "swap~ 1" asks for separate ones while "swap~" does not.
struct Swapper {
    t_pxobject ob;
};

/// One outlet that holds the level last set by "level NUMBER". It counts its vectors, and posts a row for each
/// from the audio thread when told "report 1".
struct Leveller {
    t_pxobject ob;
    double level;
    long report;
    long numVectors;
    std::thread::id* audioThread;  // of the last vector; may be null
};

/// Registers the classes "swap~" and "level~" with the host, once.
void RegisterSignalObjects();
