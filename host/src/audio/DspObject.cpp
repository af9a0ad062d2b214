#include "audio/DspObject.h"

#include "audio/DspChain.h"

namespace velmohost {
namespace {

struct DspObject {
    t_object header;
    DspChain* chain;
};

void* AddPerform(DspObject* x, t_object* object, t_perfroutine64 perform, void* flags, void* userParameter) {
    x->chain->Add(object, perform, static_cast<long>(reinterpret_cast<t_ptr_int>(flags)), userParameter);
    return nullptr;
}

/// Every cord of this host carries one channel.
t_ptr_int GetOneChannel(DspObject*, t_object*, t_ptr_int) { return 1; }

t_class* GetDspObjectClass() {
    static t_class* const dspClass = [] {
        t_class* const c = class_new("dspchain", nullptr, nullptr, static_cast<long>(sizeof(DspObject)), nullptr, 0);
        class_addmethod(c, reinterpret_cast<method>(AddPerform), "dsp_add64", A_CANT, 0);
        class_addmethod(c, reinterpret_cast<method>(GetOneChannel), "getnuminputchannels", A_CANT, 0);
        class_addmethod(c, reinterpret_cast<method>(GetOneChannel), "getnumoutputchannels", A_CANT, 0);
        class_register(CLASS_NOBOX, c);
        return c;
    }();
    return dspClass;
}

}  // namespace

t_object* NewDspObject(DspChain& chain) {
    auto* const x = static_cast<DspObject*>(object_alloc(GetDspObjectClass()));
    if (x != nullptr) x->chain = &chain;
    return reinterpret_cast<t_object*>(x);
}

DspChain* GetDspChain(t_object* dspObject) {
    if (dspObject == nullptr || object_class(dspObject) != GetDspObjectClass()) return nullptr;
    return reinterpret_cast<DspObject*>(dspObject)->chain;
}

}  // namespace velmohost
