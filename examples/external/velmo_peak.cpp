// velmo.peak~: the highest level that a signal has reached, falling off at a rate of the user's choice.
//
//     velmo.peak~ @falloff 20.       falls by 20 dB a second; 0, the default, holds until "clear"
//
// The left outlet is the held level as a signal; "bang" sends "peak LEVEL" out of the right one. A small object in the
// host's C API alone, as an example of one that velmohost runs: docs/host.md explains it.

#include "ext.h"
#include "ext_obex.h"
#include "z_dsp.h"

#include <atomic>
#include <cmath>
#include <cstdio>

namespace {

struct Peak {
    t_pxobject ob;      // first, always
    void* dumpOutlet;   // the right one
    double falloff;     // the attribute, in dB a second; main thread
    double samplerate;  // in Hz; main thread
    // Shared by the two threads, each a single word that needs no lock
    std::atomic<double> fall;    // what the level is multiplied by from sample to sample
    std::atomic<double> level;   // the held level, linear
    std::atomic<bool> clearing;  // asks the audio thread to start from silence
    static_assert(std::atomic<double>::is_always_lock_free);
};

t_class* peakClass = nullptr;

// ---- audio thread

void PeakPerform(Peak* x, t_object*, double** ins, long, double** outs, long, long sampleframes, long, void*) {
    const double fall = x->fall.load(std::memory_order_relaxed);
    double level =
        x->clearing.exchange(false, std::memory_order_relaxed) ? 0.0 : x->level.load(std::memory_order_relaxed);
    for (long i = 0; i < sampleframes; ++i) {
        const double magnitude = std::fabs(ins[0][i]);  // read first: ins[0] and outs[0] may be the same buffer
        level *= fall;
        if (magnitude > level && std::isfinite(magnitude)) level = magnitude;  // an infinity would stay for ever
        outs[0][i] = level;
    }
    x->level.store(level > 1e-15 ? level : 0.0, std::memory_order_relaxed);  // before it gets denormal, and slow
}

// ---- main thread

void SetFall(Peak* x) {
    x->fall.store(std::pow(10.0, -x->falloff / (20.0 * x->samplerate)), std::memory_order_relaxed);
}

void PeakDsp64(Peak* x, t_object* dsp64, short*, double samplerate, long, long) {
    x->samplerate = samplerate;
    SetFall(x);
    object_method(dsp64, gensym("dsp_add64"), x, PeakPerform, 0, nullptr);
}

t_max_err PeakSetFalloff(Peak* x, void*, long argc, t_atom* argv) {
    if (argc < 1 || atom_gettype(argv) == A_SYM) {
        object_error(reinterpret_cast<t_object*>(x), "falloff takes a number of dB a second");
        return MAX_ERR_NONE;  // told; the host need not tell it again
    }
    x->falloff = atom_getfloat(argv);
    SetFall(x);
    return MAX_ERR_NONE;
}

void PeakBang(Peak* x) {
    t_atom level;
    atom_setfloat(&level, x->level.load(std::memory_order_relaxed));
    outlet_anything(x->dumpOutlet, gensym("peak"), 1, &level);
}

void PeakClear(Peak* x) {
    x->level.store(0.0, std::memory_order_relaxed);
    x->clearing.store(true, std::memory_order_relaxed);  // a block that runs just now writes the level once more
}

void PeakAssist(Peak*, void*, long io, long index, char* text) {
    const char* const outlets[] = {"(signal) Held Level", "peak LEVEL upon bang, and answers"};
    std::snprintf(text, ASSIST_MAX_STRING_LEN, "%s",
                  io == ASSIST_INLET ? "(signal) What is measured; bang, clear" : outlets[index]);
}

void* PeakNew(t_symbol*, long argc, t_atom* argv) {
    auto* const x = static_cast<Peak*>(object_alloc(peakClass));
    if (x == nullptr) return nullptr;
    z_dsp_setup(&x->ob, 1);
    x->dumpOutlet = outlet_new(x, nullptr);  // outlets appear from right to left
    object_obex_store(x, gensym("dumpout"), static_cast<t_object*>(x->dumpOutlet));
    outlet_new(x, "signal");
    x->samplerate = sys_getsr();
    SetFall(x);
    attr_args_process(x, static_cast<short>(argc), argv);  // the "@falloff 20." of the box
    return x;
}

method AsMethod(auto function) { return reinterpret_cast<method>(function); }

}  // namespace

extern "C" C74_EXPORT void ext_main(void*) {
    t_class* const c =
        class_new("velmo.peak~", AsMethod(PeakNew), AsMethod(z_dsp_free), sizeof(Peak), nullptr, A_GIMME, 0);
    class_addmethod(c, AsMethod(PeakDsp64), "dsp64", A_CANT, 0);
    class_addmethod(c, AsMethod(PeakAssist), "assist", A_CANT, 0);
    class_addmethod(c, AsMethod(PeakBang), "bang", 0);
    class_addmethod(c, AsMethod(PeakClear), "clear", 0);
    CLASS_ATTR_DOUBLE(c, "falloff", 0, Peak, falloff);
    CLASS_ATTR_ACCESSORS(c, "falloff", nullptr, PeakSetFalloff);
    CLASS_ATTR_FILTER_MIN(c, "falloff", 0.0);
    CLASS_ATTR_MIN(c, "falloff", 0, "0.");  // tells users what the filter does
    CLASS_ATTR_LABEL(c, "falloff", 0, "Falloff in dB a Second");
    class_dspinit(c);
    class_register(CLASS_BOX, c);
    peakClass = c;
}
