#include "Probe.h"

using namespace velmomax;

namespace {

void probe_free(probe_t* x) { RemoveFromDspChain(&x->ob); }

t_max_err failingGetter(void*, void*, long*, t_atom**) { return MAX_ERR_OUT_OF_MEM; }

void addAttributes(t_class* c) {
    AddDocumentationAttribute(c, "classdescription", calcoffset(probe_t, ob.classdescription), "a probe");
    AddDocumentationAttribute(c, "externalversion", calcoffset(probe_t, ob.externalversion), "1.2.3 (Build now)");

    AddAttribute(c, "amount", "long", nullptr, calcoffset(probe_t, amount));
    AddTextProperty(c, "amount", "label", "how much");
    AddTextProperty(c, "amount", "description", "how <m> much </m>");
    AddProperty(c, "amount", "order", "long", "3");
    AddPropertyOfOwnType(c, "amount", "maxvalue", "250");
    AddProperty(c, "amount", "step", "float32", "0.125");
    AddProperty(c, "amount", "limits", "long", "7 8 9");

    AddAttribute(c, "gain", "float32", nullptr, calcoffset(probe_t, gain));
    AddProperty(c, "gain", "order", "float32", "1.5");
    AddProperty(c, "gain", "invisible", "float32", "1.");

    AddAttribute(c, "word", "symbol", nullptr, calcoffset(probe_t, word));
    AddProperty(c, "word", "enumvals", "atom", "up down left");
    AddProperty(c, "word", "order", "long", "1");

    class_addattr(
        c, attr_offset_array_new("values", gensym("float64"), 3, 0, nullptr, nullptr, 0, calcoffset(probe_t, values)));
    AddProperty(c, "values", "enumvals", "atom", "one 2");
    AddProperty(c, "values", "order", "long", "2");

    AddAttribute(c, "ghost", "long", nullptr, calcoffset(probe_t, amount));
    AddProperty(c, "ghost", "invisible", "long", "1");
    AddAttribute(c, "fontsize", "float32", nullptr, calcoffset(probe_t, gain));  // one of the box's own
    class_addattr(c, attr_offset_new("broken", gensym("long"), 0, AsMethod(failingGetter), nullptr, 0));
}

}  // namespace

t_class* ProbeClass() {
    static t_class* probeClass = [] {
        InitCommonSymbols();
        t_class* c = class_new("probe~", nullptr, AsMethod(probe_free), static_cast<long>(sizeof(probe_t)), nullptr, 0);
        addAttributes(c);
        AddCommonMethods(c);
        AddMspMethods(c);
        class_dspinit(c);
        class_register(gensym("box"), c);
        return c;
    }();
    return probeClass;
}
