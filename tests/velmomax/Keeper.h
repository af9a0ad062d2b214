#pragma once

#include <deque>

#include "hostapi/ApiObjects.h"
#include "velmomax.h"

using Rows = std::vector<std::string>;

/// An object with state and nothing else: class "keeper".
struct keeper_t {
    t_object ob;
    t_symbol* texts[4];  // of the documentation attributes
    float level;
    double list[2];
    t_symbol* name;
    long count;
};

/// What the attribute "odd" answers when it is read: a host error, or atoms.
struct OddAnswer {
    t_max_err error;
    std::vector<t_atom> atoms;
    long reportedCount = 0;  // in the stead of the number of atoms, when not 0
};

/// An object of the class, the Max window, and the faults of its attribute "odd". Its state is "count", "level", "list"
/// (two values) and "name"; "odd", the last one, has no value unless `odd` holds answers for its next readings.
struct Keeper {
    explicit Keeper(bool hasDumpOutlet = true) : x(static_cast<keeper_t*>(velmomax::ObjectAlloc(Class()))) {
        if (hasDumpOutlet) velmomax::AddDumpOutlet(x);
    }
    ~Keeper() {
        object_free(x);
        odd.clear();
        oddSetting = MAX_ERR_NONE;
    }

    /// Sends a message as a user does, and returns the rows that it leads to.
    Rows Send(const std::string& message) {
        window.Take();
        velmotest::Send(x, message);
        return window.Take();
    }

    /// The state as "getvalueof" gives it, in text.
    std::string State() {
        long ac = 0;
        t_atom* av = nullptr;
        velmomax::velmomax_getvalueof(x, &ac, &av);
        const std::string text = velmohost::AtomsToText(ac, av);
        sysmem_freeptr(av);
        return text;
    }

    /// Gives the state "count", "level", "list" and "name" other values than those of a new object.
    void Change() {
        x->count = 3;
        x->level = 0.5f;
        x->list[0] = 1.0;
        x->list[1] = -2.5;
        x->name = gensym("two words");
    }

    velmotest::CapturedWindow window;
    keeper_t* const x;

    static inline std::deque<OddAnswer> odd;            // the next readings
    static inline t_max_err oddSetting = MAX_ERR_NONE;  // what every setting of "odd" gives

private:
    static t_max_err GetOdd(void*, void*, long* ac, t_atom** av) {
        *ac = 0;
        *av = nullptr;
        if (odd.empty()) return MAX_ERR_NONE;
        const OddAnswer answer = odd.front();
        odd.pop_front();
        *ac = answer.reportedCount != 0 ? answer.reportedCount : static_cast<long>(answer.atoms.size());
        if (!answer.atoms.empty()) {
            *av = reinterpret_cast<t_atom*>(sysmem_newptr(answer.atoms.size() * sizeof(t_atom)));
            std::copy(answer.atoms.begin(), answer.atoms.end(), *av);
        }
        return answer.error;
    }

    static t_max_err SetOdd(void*, void*, long, t_atom*) { return oddSetting; }

    /// Made at the first call.
    static t_class* Class() {
        using namespace velmomax;
        static t_class* const keeper = [] {
            InitCommonSymbols();
            t_class* c = class_new("keeper", nullptr, nullptr, static_cast<long>(sizeof(keeper_t)), nullptr, 0);
            AddDocumentationAttribute(c, "classdescription", calcoffset(keeper_t, texts), "a keeper keeps");
            AddCommonMethods(c);
            AddAttribute(c, "count", "long", nullptr, calcoffset(keeper_t, count));
            AddAttribute(c, "level", "float32", nullptr, calcoffset(keeper_t, level));
            class_addattr(c, attr_offset_array_new("list", gensym("float64"), 2, 0, nullptr, nullptr, 0,
                                                   calcoffset(keeper_t, list)));
            AddAttribute(c, "name", "symbol", nullptr, calcoffset(keeper_t, name));
            class_addattr(c, attr_offset_new("odd", gensym("atom"), 0, AsMethod(GetOdd), AsMethod(SetOdd), 0));
            class_register(gensym("box"), c);
            return c;
        }();
        return keeper;
    }
};
