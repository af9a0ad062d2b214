#include "velmomax_msp.h"

#include <new>

#include "velmomax_documentation.h"

namespace velmomax {

namespace {

const char* processingState(const _VelmoMspObject* x) {
    if (x->mute.Load() == 1 || GetDisabled(x) != 0) return "dsp processing is muted";
    if (x->bypass.Load() == 1) return "dsp processing is bypassed";
    return "dsp processing is enabled";
}

}  // namespace

void AddMspMethods(t_class* c) noexcept {
    class_addmethod(c, AsMethod(postdspstatus), "postdspstatus", 0);
    class_doc_method(c, "postdspstatus", "post information about the dsp status in the Max window.");
}

void AddDspChainMethod(t_class* c, method m) noexcept { class_addmethod(c, m, "dsp64", A_CANT, 0); }

void AddPostDspInletsStatus(t_class* c, method m) noexcept {
    class_addmethod(c, m, "postdspstate", 0);
    class_doc_method(c, "postdspstate", "post information about the dsp connections.");
}

void CreateDspInletsAndOutlets(_VelmoMspObject* x, std::uint32_t numIn, std::uint32_t numOut, bool noInPlace) {
    z_dsp_setup(&x->ob, static_cast<long>(numIn));
    for (std::uint32_t i = 0; i < numOut; ++i) {
        if (!outlet_new(x, "signal")) throw std::bad_alloc();
    }
    if (noInPlace) x->ob.z_misc = Z_NO_INPLACE;
}

void RemoveFromDspChain(_VelmoMspObject* x) noexcept { z_dsp_free(&x->ob); }

void postdspstatus(_VelmoMspObject* x) noexcept {
    auto* object = reinterpret_cast<t_object*>(x);
    object_post(object, "%s", processingState(x));
    object_post(object, "%s", sys_getdspstate() ? "dsp is on" : "dsp is off");
}

}  // namespace velmomax
