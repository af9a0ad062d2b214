#include "box/Patcher.h"

#include "core/OutOfMemory.h"
#include "ext_obex.h"

namespace velmohost {
namespace {

/// Objects ask their patcher for these by name.
struct PatcherObject {
    t_object header;
    t_symbol* name;
    t_symbol* filepath;
    t_object* parentpatcher;  // null: it is the top
};

struct BoxObject {
    t_object header;
};

void AddReadOnly(t_class* c, const char* name, const char* type, long offset) {
    class_addattr(
        c, static_cast<t_object*>(attr_offset_new(name, gensym(type), ATTR_SET_OPAQUE_USER, nullptr, nullptr, offset)));
}

t_class* GetPatcherClass() {
    static t_class* const patcherClass = [] {
        t_class* const c =
            Required(class_new("patcher", nullptr, nullptr, static_cast<long>(sizeof(PatcherObject)), nullptr, 0));
        AddReadOnly(c, "name", "symbol", calcoffset(PatcherObject, name));
        AddReadOnly(c, "filepath", "symbol", calcoffset(PatcherObject, filepath));
        AddReadOnly(c, "parentpatcher", "object", calcoffset(PatcherObject, parentpatcher));
        class_register(CLASS_NOBOX, c);
        return c;
    }();
    return patcherClass;
}

t_class* GetBoxClass() {
    static t_class* const boxClass = [] {
        t_class* const c =
            Required(class_new("newobj", nullptr, nullptr, static_cast<long>(sizeof(BoxObject)), nullptr, 0));
        class_register(CLASS_NOBOX, c);
        return c;
    }();
    return boxClass;
}

}  // namespace

t_object* NewPatcherObject() {
    auto* const x = NewRecord<PatcherObject>(GetPatcherClass());
    x->name = gensym("velmohost");
    x->filepath = gensym("");
    return &x->header;
}

t_object* NewBoxObject() { return &NewRecord<BoxObject>(GetBoxClass())->header; }

}  // namespace velmohost
