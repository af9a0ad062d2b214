#pragma once

#include <string>
#include <vector>

#include "velmomax.h"

#include "support/CapturedWindow.h"

using Rows = std::vector<std::string>;

/// A signal object made with the toolkit: class "probe~", whose attributes have properties of all kinds.
struct probe_t {
    velmomax::_VelmoMspObject ob;
    long amount;
    float gain;
    t_symbol* word;
    double values[3];
};

/// The class, made at the first call.
t_class* ProbeClass();

/// An object of the class, with a dump outlet, two signal inlets and three signal outlets, and the Max window.
struct Probe {
    Probe() : x(static_cast<probe_t*>(velmomax::ObjectAlloc(ProbeClass()))) {
        velmomax::AddDumpOutlet(x);
        velmomax::CreateDspInletsAndOutlets(&x->ob, 2, 3, true);
    }
    ~Probe() { object_free(x); }

    velmotest::CapturedWindow window;
    probe_t* const x;
};
