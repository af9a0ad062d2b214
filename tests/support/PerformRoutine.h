#pragma once

#include <vector>

#include "VelmoHost.h"

#include "core/Messages.h"
#include "ext_obex.h"
#include "realtime/RealtimeContext.h"
#include "z_dsp.h"

namespace velmotest {

/// What an object adds to a signal chain, for tests that perform its blocks themselves: at any length, which the host's
/// own chain does not do, and on any thread.
class PerformRoutine {
public:
    PerformRoutine() : added(New()) {}
    ~PerformRoutine() { object_free(added); }
    PerformRoutine(const PerformRoutine&) = delete;
    PerformRoutine& operator=(const PerformRoutine&) = delete;

    /// Has the object configure itself by "dsp64". Main thread, while no block is being performed.
    /// @param connections one entry for each inlet, then each outlet
    void Configure(const velmohost::Box& box, std::vector<short> connections, double samplerate, long maxBlockSize) {
        velmohost::CallMethod(box.Object(), gensym("dsp64"), &added->header, connections.data(), samplerate,
                              maxBlockSize, 0L);
    }

    /// Performs `n` samples from one buffer per inlet to one per signal outlet. Audio thread.
    void Perform(double** ins, long numIns, double** outs, long numOuts, long n) const {
        const velmohost::RealtimeContext realtime;
        added->perform(added->object, &added->header, ins, numIns, outs, numOuts, n, 0, nullptr);
    }

private:
    /// What "dsp64" takes for the chain.
    struct Added {
        t_object header;
        t_object* object;
        t_perfroutine64 perform;
    };

    static void* Add(Added* x, t_object* object, t_perfroutine64 perform, void*, void*) {
        x->object = object;
        x->perform = perform;
        return nullptr;
    }

    static Added* New() {
        static t_class* const addedClass = [] {
            t_class* const c = class_new("added", nullptr, nullptr, static_cast<long>(sizeof(Added)), nullptr, 0);
            class_addmethod(c, reinterpret_cast<method>(Add), "dsp_add64", A_CANT, 0);
            class_register(CLASS_NOBOX, c);
            return c;
        }();
        return static_cast<Added*>(object_alloc(addedClass));
    }

    Added* const added;
};

}  // namespace velmotest
