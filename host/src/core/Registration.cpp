// Names for objects, and the clients that are told of an object's changes.

#include <algorithm>
#include <map>
#include <utility>

#include "core/Instance.h"
#include "core/Messages.h"
#include "core/OutOfMemory.h"
#include "ext_obex.h"

namespace velmohost {
namespace {

using Names = std::map<std::pair<t_symbol*, t_symbol*>, t_object*>;

Names& RegisteredObjects() {
    static Names& names = *new Names;
    return names;
}

void Unregister(t_object* x) {
    Instance* const instance = FindInstance(x);
    if (instance == nullptr || instance->registeredName == nullptr) return;
    RegisteredObjects().erase({instance->registeredNameSpace, instance->registeredName});
    instance->registeredNameSpace = instance->registeredName = nullptr;
}

}  // namespace

void ForgetRegistration(t_object* x) {
    if (FindInstance(x) == nullptr) return;
    object_notify(x, gensym("free"), nullptr);
    Unregister(x);
    Instance& instance = *FindInstance(x);
    for (t_object* target : instance.targets) std::erase(FindInstance(target)->clients, x);
    for (t_object* client : instance.clients) std::erase(FindInstance(client)->targets, x);
    instance.targets.clear();
    instance.clients.clear();
}

}  // namespace velmohost

using namespace velmohost;

extern "C" {

void* object_register(t_symbol* name_space, t_symbol* s, void* object) try {
    t_object* const x = LivingObject(object);
    if (x == nullptr || name_space == nullptr) return nullptr;
    t_symbol* const name = s != nullptr ? s : symbol_unique();
    if (name == nullptr) return nullptr;
    Instance& instance = GetInstance(x);
    const auto [entry, isNew] = RegisteredObjects().emplace(std::pair(name_space, name), x);
    if (!isNew) return entry->second;
    if (instance.registeredName != nullptr) {
        RegisteredObjects().erase({instance.registeredNameSpace, instance.registeredName});
    }
    instance.registeredNameSpace = name_space;
    instance.registeredName = name;
    return x;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err object_unregister(void* object) {
    t_object* const x = LivingObject(object);
    if (x == nullptr) return MAX_ERR_INVALID_PTR;
    Unregister(x);
    return MAX_ERR_NONE;
}

void* object_findregistered(t_symbol* name_space, t_symbol* s) {
    const auto found = RegisteredObjects().find({name_space, s});
    return found != RegisteredObjects().end() ? found->second : nullptr;
}

void* object_attach(t_symbol* name_space, t_symbol* s, void* x) {
    void* const target = object_findregistered(name_space, s);
    return object_attach_byptr(x, target) == MAX_ERR_NONE ? target : nullptr;
}

t_max_err object_detach(t_symbol* name_space, t_symbol* s, void* x) {
    return object_detach_byptr(x, object_findregistered(name_space, s));
}

t_max_err object_attach_byptr(void* x, void* registeredobject) try {
    t_object* const client = LivingObject(x);
    t_object* const target = LivingObject(registeredobject);
    if (client == nullptr || target == nullptr) return MAX_ERR_INVALID_PTR;
    std::vector<t_object*>& clients = GetInstance(target).clients;
    if (std::find(clients.begin(), clients.end(), client) != clients.end()) return MAX_ERR_DUPLICATE;
    std::vector<t_object*>& targets = GetInstance(client).targets;
    targets.reserve(targets.size() + 1);
    clients.push_back(client);
    targets.push_back(target);
    return MAX_ERR_NONE;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err object_attach_byptr_register(void* x, void* object_to_attach, t_symbol* reg_name_space) {
    t_object* const target = LivingObject(object_to_attach);
    if (target == nullptr) return MAX_ERR_INVALID_PTR;
    if (GetInstance(target).registeredName == nullptr) object_register(reg_name_space, nullptr, target);
    return object_attach_byptr(x, target);
}

t_max_err object_detach_byptr(void* x, void* registeredobject) {
    t_object* const client = LivingObject(x);
    t_object* const target = LivingObject(registeredobject);
    if (client == nullptr || target == nullptr) return MAX_ERR_INVALID_PTR;
    const bool wasAttached = std::erase(GetInstance(target).clients, client) > 0;
    std::erase(GetInstance(client).targets, target);
    return wasAttached ? MAX_ERR_NONE : MAX_ERR_GENERIC;
}

t_max_err object_notify(void* object, t_symbol* s, void* data) try {
    t_object* const x = LivingObject(object);
    if (x == nullptr) return MAX_ERR_INVALID_PTR;
    if (FindInstance(x) == nullptr) return MAX_ERR_NONE;
    // A copy, as clients attach and detach while they are told; those that went away meanwhile are left out.
    const std::vector<t_object*> clients = FindInstance(x)->clients;
    for (t_object* client : clients) {
        const Instance& instance = *FindInstance(x);
        if (std::find(instance.clients.begin(), instance.clients.end(), client) == instance.clients.end()) continue;
        CallMethod(client, gensym("notify"), instance.registeredName, s, static_cast<void*>(x), data);
    }
    return MAX_ERR_NONE;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

}  // extern "C"
