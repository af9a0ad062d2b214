#pragma once

#include "hostapi/ApiObjects.h"
#include "velmomax.h"

using Rows = std::vector<std::string>;

/// A signal object made with the toolkit: class "probe~", whose attributes have properties of all kinds.
struct probe_t {
    velmomax::_VelmoMspObject ob;
    long amount;
    float gain;
    t_symbol* word;
    double values[3];
};

/// An object of the class, with a dump outlet, two signal inlets and three signal outlets, and the Max window.
struct Probe {
    Probe() : x(static_cast<probe_t*>(velmomax::ObjectAlloc(Class()))) {
        velmomax::AddDumpOutlet(x);
        velmomax::CreateDspInletsAndOutlets(&x->ob, 2, 3, true);
    }
    ~Probe() { object_free(x); }

    /// Made at the first call.
    static t_class* Class() {
        static t_class* const probe = [] {
            velmomax::InitCommonSymbols();
            t_class* c =
                class_new("probe~", nullptr, velmomax::AsMethod(Free), static_cast<long>(sizeof(probe_t)), nullptr, 0);
            AddAttributes(c);
            velmomax::AddCommonMethods(c);
            velmomax::AddMspMethods(c);
            class_dspinit(c);
            class_register(gensym("box"), c);
            return c;
        }();
        return probe;
    }

    /// The rows that a user's message to the object leads to.
    Rows Send(const std::string& message) {
        window.Take();
        velmotest::Send(x, message);
        return window.Take();
    }

    velmotest::CapturedWindow window;
    probe_t* const x;

private:
    static void Free(probe_t* x) { velmomax::RemoveFromDspChain(&x->ob); }

    static t_max_err FailToGet(void*, void*, long*, t_atom**) { return MAX_ERR_OUT_OF_MEM; }

    static void AddAttributes(t_class* c) {
        using namespace velmomax;
        AddDocumentationAttribute(c, "classdescription", calcoffset(probe_t, ob.classdescription), "a probe");
        AddDocumentationAttribute(c, "externalversion", calcoffset(probe_t, ob.externalversion), "1.2.3 (Build now)");

        AddAttribute(c, "amount", "long", nullptr, calcoffset(probe_t, amount));
        AddTextProperty(c, "amount", "label", "how much");
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

        class_addattr(c, attr_offset_array_new("values", gensym("float64"), 3, 0, nullptr, nullptr, 0,
                                               calcoffset(probe_t, values)));
        AddProperty(c, "values", "enumvals", "atom", "one 2");
        AddProperty(c, "values", "order", "long", "2");

        AddAttribute(c, "ghost", "long", nullptr, calcoffset(probe_t, amount));
        AddProperty(c, "ghost", "invisible", "long", "1");
        AddAttribute(c, "fontsize", "float32", nullptr, calcoffset(probe_t, gain));  // one of the box's own
        class_addattr(c, attr_offset_new("broken", gensym("long"), 0, AsMethod(FailToGet), nullptr, 0));
    }
};
