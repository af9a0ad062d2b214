#include "Keeper.h"

#include "hostapi/ApiObjects.h"

using namespace velmomax;

namespace {

t_max_err getOdd(void*, void*, long* ac, t_atom** av) {
    *ac = 0;
    *av = nullptr;
    if (Keeper::odd.empty()) return MAX_ERR_NONE;
    const OddAnswer answer = Keeper::odd.front();
    Keeper::odd.pop_front();
    *ac = answer.reportedCount != 0 ? answer.reportedCount : static_cast<long>(answer.atoms.size());
    if (!answer.atoms.empty()) {
        *av = reinterpret_cast<t_atom*>(sysmem_newptr(answer.atoms.size() * sizeof(t_atom)));
        std::copy(answer.atoms.begin(), answer.atoms.end(), *av);
    }
    return answer.error;
}

t_max_err setOdd(void*, void*, long, t_atom*) { return Keeper::oddSetting; }

t_class* keeperClass() {
    static t_class* keeper = [] {
        InitCommonSymbols();
        t_class* c = class_new("keeper", nullptr, nullptr, static_cast<long>(sizeof(keeper_t)), nullptr, 0);
        AddDocumentationAttribute(c, "classdescription", calcoffset(keeper_t, texts), "a keeper keeps");
        AddCommonMethods(c);
        AddAttribute(c, "count", "long", nullptr, calcoffset(keeper_t, count));
        AddAttribute(c, "level", "float32", nullptr, calcoffset(keeper_t, level));
        class_addattr(
            c, attr_offset_array_new("list", gensym("float64"), 2, 0, nullptr, nullptr, 0, calcoffset(keeper_t, list)));
        AddAttribute(c, "name", "symbol", nullptr, calcoffset(keeper_t, name));
        class_addattr(c, attr_offset_new("odd", gensym("atom"), 0, AsMethod(getOdd), AsMethod(setOdd), 0));
        class_register(gensym("box"), c);
        return c;
    }();
    return keeper;
}

}  // namespace

Keeper::Keeper(bool hasDumpOutlet) : x(static_cast<keeper_t*>(ObjectAlloc(keeperClass()))) {
    if (hasDumpOutlet) AddDumpOutlet(x);
}

Keeper::~Keeper() {
    object_free(x);
    odd.clear();
    oddSetting = MAX_ERR_NONE;
}

Rows Keeper::Send(const std::string& message) {
    window.Take();
    velmotest::Send(x, message);
    return window.Take();
}

std::string Keeper::State() {
    long ac = 0;
    t_atom* av = nullptr;
    velmomax_getvalueof(x, &ac, &av);
    const std::string text = velmohost::AtomsToText(ac, av);
    sysmem_freeptr(av);
    return text;
}

void Keeper::Change() {
    x->count = 3;
    x->level = 0.5f;
    x->list[0] = 1.0;
    x->list[1] = -2.5;
    x->name = gensym("two words");
}
