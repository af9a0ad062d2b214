#include "box/Patcher.h"

#include "core/OutOfMemory.h"
#include "core/Owned.h"
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
    OwnedRecord<t_object> attribute(
        attr_offset_new(name, gensym(type), ATTR_SET_OPAQUE_USER, nullptr, nullptr, offset));
    if (attribute == nullptr || class_addattr(c, attribute.get()) != MAX_ERR_NONE) throw std::bad_alloc();
    static_cast<void>(attribute.release());
}

t_class* GetPatcherClass() {
    static t_class* const patcherClass = [] {
        OwnedClass c(
            Required(class_new("patcher", nullptr, nullptr, static_cast<long>(sizeof(PatcherObject)), nullptr, 0)));
        AddReadOnly(c.get(), "name", "symbol", calcoffset(PatcherObject, name));
        AddReadOnly(c.get(), "filepath", "symbol", calcoffset(PatcherObject, filepath));
        AddReadOnly(c.get(), "parentpatcher", "object", calcoffset(PatcherObject, parentpatcher));
        Required(class_register(CLASS_NOBOX, c.get()));
        return c.release();
    }();
    return patcherClass;
}

t_class* GetBoxClass() {
    static t_class* const boxClass = [] {
        OwnedClass c(Required(class_new("newobj", nullptr, nullptr, static_cast<long>(sizeof(BoxObject)), nullptr, 0)));
        Required(class_register(CLASS_NOBOX, c.get()));
        return c.release();
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
