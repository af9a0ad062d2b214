// Attribute objects: making and freeing them, the messages they answer, and the default accessors.

#include "core/Attribute.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "core/AtomOutput.h"
#include "core/Instance.h"
#include "core/OutOfMemory.h"
#include "core/Owned.h"

namespace velmohost {
namespace {

// ---- default accessors

unsigned char* PlaceOf(void* owner, const Attribute& a) { return static_cast<unsigned char*>(owner) + a.offset; }

long* CountOf(void* owner, const Attribute& a) {
    return a.countOffset > 0 ? reinterpret_cast<long*>(static_cast<unsigned char*>(owner) + a.countOffset) : nullptr;
}

std::vector<t_atom> ReadRecord(void* owner, const Attribute& a) {
    const long* const count = CountOf(owner, a);
    std::vector<t_atom> atoms;
    const long numValues = count != nullptr ? std::clamp(*count, 0L, a.maxCount) : a.maxCount;
    for (long i = 0; i < numValues; ++i) {
        atoms.push_back(a.storage->read(PlaceOf(owner, a) + static_cast<std::size_t>(i) * a.storage->size));
    }
    return atoms;
}

void WriteRecord(void* owner, const Attribute& a, long ac, const t_atom* av) {
    const long numValues = std::min(ac, a.maxCount);
    for (long i = 0; i < numValues; ++i) {
        a.storage->write(PlaceOf(owner, a) + static_cast<std::size_t>(i) * a.storage->size, av[i]);
    }
    if (long* const count = CountOf(owner, a)) *count = numValues;
}

t_max_err GetDefault(void* owner, Attribute* a, long* ac, t_atom** av) try {
    if (a->ownValues != nullptr) return GiveAtoms(*a->ownValues, ac, av);
    return a->storage != nullptr ? GiveAtoms(ReadRecord(owner, *a), ac, av) : static_cast<t_max_err>(MAX_ERR_GENERIC);
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err SetDefault(void* owner, Attribute* a, long ac, t_atom* av) try {
    if (a->ownValues != nullptr) {
        std::vector<t_atom> values;
        std::transform(av, av + ac, std::back_inserter(values),
                       [a](const t_atom& atom) { return ConvertToType(a->storage, atom); });
        *a->ownValues = std::move(values);
        return MAX_ERR_NONE;
    }
    if (a->storage == nullptr) return MAX_ERR_GENERIC;
    WriteRecord(owner, *a, ac, av);
    return MAX_ERR_NONE;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

const method getDefault = reinterpret_cast<method>(GetDefault);
const method setDefault = reinterpret_cast<method>(SetDefault);

// ---- messages

t_symbol* GetName(Attribute* a) { return a->attr.name; }
t_symbol* GetType(Attribute* a) { return a->attr.type; }
t_ptr_int GetFlags(Attribute* a) { return a->attr.flags; }
t_ptr_int UserCanGet(Attribute* a) { return (a->attr.flags & (ATTR_GET_OPAQUE | ATTR_GET_OPAQUE_USER)) == 0; }
t_ptr_int UserCanSet(Attribute* a) { return (a->attr.flags & (ATTR_SET_OPAQUE | ATTR_SET_OPAQUE_USER)) == 0; }

t_ptr_int SetFlags(Attribute* a, t_ptr_int flags) {
    a->attr.flags = static_cast<long>(flags);
    return MAX_ERR_NONE;
}

t_ptr_int SetName(Attribute* a, t_symbol* name) {
    if (name == nullptr) return MAX_ERR_INVALID_PTR;
    a->attr.name = name;
    return MAX_ERR_NONE;
}

method GetAccessor(Attribute* a, t_symbol* which) {
    if (which == gensym("get")) return a->attr.get;
    return which == gensym("set") ? a->attr.set : nullptr;
}

t_ptr_int SetAccessor(Attribute* a, t_symbol* which, method accessor) {
    if (which == gensym("get")) {
        a->attr.get = accessor != nullptr ? accessor : getDefault;
    } else if (which == gensym("set")) {
        a->attr.set = accessor != nullptr ? accessor : setDefault;
    } else {
        return MAX_ERR_GENERIC;
    }
    return MAX_ERR_NONE;
}

t_ptr_int Get(Attribute* a, t_object* owner, long* ac, t_atom** av) { return GetValue(owner, *a, ac, av); }

t_ptr_int Set(Attribute* a, t_object* owner, t_ptr_int ac, t_atom* av) try {
    return SetValue(owner, *a, static_cast<long>(ac), av);
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

// ---- making and freeing

void FreeAttribute(Attribute* a) {
    object_free(a->attr.filterget);
    object_free(a->attr.filterset);
    delete a->ownValues;
}

t_class* AttributeClass() {
    static t_class* const attributeClass = [] {
        OwnedClass c(Required(
            class_new("attribute", nullptr, reinterpret_cast<method>(FreeAttribute), sizeof(Attribute), nullptr, 0)));
        const auto add = [&c](auto function, const char* name) {
            Required(class_addmethod(c.get(), reinterpret_cast<method>(function), name, A_CANT, 0));
        };
        add(GetName, "getname");
        add(SetName, "setname");
        add(GetType, "gettype");
        add(GetFlags, "getflags");
        add(SetFlags, "setflags");
        add(GetAccessor, "getmethod");
        add(SetAccessor, "setmethod");
        add(UserCanGet, "usercanget");
        add(UserCanSet, "usercanset");
        add(Get, "get");
        add(Set, "set");
        return c.release();
    }();
    return attributeClass;
}

Attribute* NewAttribute(const char* name, const t_symbol* type, long flags, method get, method set) {
    if (name == nullptr) return nullptr;
    auto* const a = NewRecord<Attribute>(AttributeClass());
    a->attr.name = gensym(name);
    a->attr.type = type != nullptr ? const_cast<t_symbol*>(type) : gensym("atom");
    a->attr.flags = flags;
    a->attr.get = get != nullptr ? get : getDefault;
    a->attr.set = set != nullptr ? set : setDefault;
    a->storage = FindAttributeType(a->attr.type);
    return a;
}

t_object* NewRecordAttribute(const char* name, const t_symbol* type, long flags, method get, method set, long maxCount,
                             long countOffset, long offset) try {
    Attribute* const a = NewAttribute(name, type, flags, get, set);
    if (a == nullptr) return nullptr;
    a->maxCount = std::max(0L, maxCount);
    a->countOffset = countOffset;
    a->offset = offset;
    return &a->attr.ob;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

}  // namespace

Attribute* AsAttribute(void* attribute) {
    return object_class(attribute) == AttributeClass() ? static_cast<Attribute*>(attribute) : nullptr;
}

Attribute* NewOwnAttribute(const char* name, const t_symbol* type, long flags, const std::vector<t_atom>& values) {
    OwnedRecord<Attribute> a(NewAttribute(name, type, flags, nullptr, nullptr));
    if (a == nullptr) return nullptr;
    a->ownValues = new std::vector<t_atom>;
    std::transform(values.begin(), values.end(), std::back_inserter(*a->ownValues),
                   [&a](const t_atom& atom) { return ConvertToType(a->storage, atom); });
    return a.release();
}

void FreeOwnAttributes(t_object* x) {
    Instance* const instance = FindInstance(x);
    while (instance != nullptr && !instance->attributes.empty()) {
        t_object* const attribute = instance->attributes.back();
        instance->attributes.pop_back();
        object_free(attribute);
    }
}

}  // namespace velmohost

using namespace velmohost;

extern "C" {

t_object* attr_offset_new(const char* name, const t_symbol* type, long flags, const method mget, const method mset,
                          long offset) {
    return NewRecordAttribute(name, type, flags, mget, mset, 1, 0, offset);
}

t_object* attr_offset_array_new(const char* name, t_symbol* type, long size, long flags, method mget, method mset,
                                long offsetcount, long offset) {
    return NewRecordAttribute(name, type, flags, mget, mset, size, offsetcount, offset);
}

t_object* attribute_new(const char* name, t_symbol* type, long flags, method mget, method mset) try {
    Attribute* const a = NewOwnAttribute(name, type, flags, {});
    if (a == nullptr) return nullptr;
    SetAccessor(a, gensym("get"), mget);
    SetAccessor(a, gensym("set"), mset);
    return &a->attr.ob;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

}  // extern "C"
