#include "host/SignalObjects.h"

#include <algorithm>

#include "hostapi/ApiObjects.h"
#include "platform/VelmoDspFloatingPointControl.h"

namespace {

using velmotest::AsMethod;

t_class *swapClass, *levelClass;

void* NewSwapper(t_atom_long noInPlace) {
    auto* const x = static_cast<Swapper*>(object_alloc(swapClass));
    z_dsp_setup(&x->ob, 2);
    outlet_new(x, "signal");
    outlet_new(x, "signal");
    if (noInPlace != 0) x->ob.z_misc = Z_NO_INPLACE;
    return x;
}

void SwapPerform(t_object*, t_object*, double** ins, long, double** outs, long, long sampleframes, long, void*) {
    using velmodsp::FloatingPointControl;
    FloatingPointControl::Set(FloatingPointControl::Get() | FloatingPointControl::FlushDenormalsBits);
    std::copy_n(ins[1], sampleframes, outs[0]);
    std::copy_n(ins[0], sampleframes, outs[1]);
}

void SwapDsp(Swapper* x, t_object* dsp64, short*, double, long, long) {
    object_method(dsp64, gensym("dsp_add64"), x, SwapPerform, 0, nullptr);
}

void* NewLeveller() {
    auto* const x = static_cast<Leveller*>(object_alloc(levelClass));
    z_dsp_setup(&x->ob, 1);
    outlet_new(x, "signal");
    return x;
}

void LevelPerform(Leveller* x, t_object*, double**, long, double** outs, long, long sampleframes, long, void*) {
    std::fill_n(outs[0], sampleframes, x->level);
    if (x->report != 0) object_post(&x->ob.z_ob, "vector %ld", x->numVectors);
    if (x->audioThread != nullptr) *x->audioThread = std::this_thread::get_id();
    ++x->numVectors;
}

void LevelDsp(Leveller* x, t_object* dsp64, short*, double, long, long) {
    dsp_add64(dsp64, &x->ob.z_ob, reinterpret_cast<t_perfroutine64>(LevelPerform), 0, nullptr);
}

}  // namespace

void RegisterSignalObjects() {
    if (swapClass != nullptr) return;
    swapClass = class_new("swap~", AsMethod(NewSwapper), AsMethod(z_dsp_free), sizeof(Swapper), nullptr, A_DEFLONG, 0);
    class_addmethod(swapClass, AsMethod(SwapDsp), "dsp64", A_CANT, 0);
    class_dspinit(swapClass);
    class_register(CLASS_BOX, swapClass);

    levelClass = class_new("level~", AsMethod(NewLeveller), AsMethod(z_dsp_free), sizeof(Leveller), nullptr, 0);
    class_addmethod(levelClass, AsMethod(LevelDsp), "dsp64", A_CANT, 0);
    CLASS_ATTR_DOUBLE(levelClass, "level", 0, Leveller, level);
    CLASS_ATTR_LONG(levelClass, "report", 0, Leveller, report);
    class_dspinit(levelClass);
    class_register(CLASS_BOX, levelClass);
}
