#include "audio/DspObject.h"

#include "audio/DspChain.h"
#include "core/OutOfMemory.h"
#include "core/Owned.h"

namespace velmohost {
namespace {

struct DspObject {
    t_object header;
    DspChain* chain;
};

void* AddPerform(DspObject* x, t_object* object, t_perfroutine64 perform, void* flags, void* userParameter) try {
    x->chain->Add(object, perform, static_cast<long>(reinterpret_cast<t_ptr_int>(flags)), userParameter);
    return nullptr;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

/// Every cord of this host carries one channel.
t_ptr_int GetOneChannel(DspObject*, t_object*, t_ptr_int) { return 1; }

t_class* GetDspObjectClass() {
    static t_class* const dspClass = [] {
        OwnedClass c(
            Required(class_new("dspchain", nullptr, nullptr, static_cast<long>(sizeof(DspObject)), nullptr, 0)));
        const auto add = [&c](auto function, const char* name) {
            Required(class_addmethod(c.get(), reinterpret_cast<method>(function), name, A_CANT, 0));
        };
        add(AddPerform, "dsp_add64");
        add(GetOneChannel, "getnuminputchannels");
        add(GetOneChannel, "getnumoutputchannels");
        Required(class_register(CLASS_NOBOX, c.get()));
        return c.release();
    }();
    return dspClass;
}

}  // namespace

t_object* NewDspObject(DspChain& chain) {
    auto* const x = NewRecord<DspObject>(GetDspObjectClass());
    x->chain = &chain;
    return &x->header;
}

DspChain* GetDspChain(t_object* dspObject) {
    if (dspObject == nullptr || object_class(dspObject) != GetDspObjectClass()) return nullptr;
    return reinterpret_cast<DspObject*>(dspObject)->chain;
}

}  // namespace velmohost
