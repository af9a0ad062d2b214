// Texts as objects, the form in which dictionaries hold long ones.

#include "core/StringObjects.h"

#include <cstring>

#include "core/HostClasses.h"
#include "core/OutOfMemory.h"
#include "core/Owned.h"
#include "ext_obex.h"

namespace velmohost {
namespace {

void* NewEmptyString() { return NewString(""); }

void FreeString(t_string* x) { sysmem_freeptr(x->s_text); }

}  // namespace

t_class* StringClass() {
    static t_class* const c =
        Required(class_new("string", reinterpret_cast<method>(NewEmptyString), reinterpret_cast<method>(FreeString),
                           sizeof(t_string), nullptr, A_CANT, 0));
    return c;
}

t_object* NewString(const char* text) try {
    OwnedRecord<t_string> x(NewRecord<t_string>(StringClass()));
    const std::size_t size = std::strlen(text) + 1;
    x->s_text = sysmem_newptr(size);
    if (x->s_text == nullptr) throw std::bad_alloc();
    x->s_size = static_cast<long>(size);
    std::memcpy(x->s_text, text, size);
    return &x.release()->s_obj;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

const char* TextOf(void* x) { return object_class(x) == StringClass() ? static_cast<t_string*>(x)->s_text : nullptr; }

}  // namespace velmohost
