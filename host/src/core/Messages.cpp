#include "core/Messages.h"

#include <algorithm>
#include <string>

#include "core/ClassRecord.h"
#include "core/Inlets.h"
#include "core/Instance.h"
#include "core/MethodCalls.h"
#include "core/Objects.h"
#include "core/OutOfMemory.h"
#include "ext_obex.h"
#include "window/MaxWindow.h"

namespace velmohost {
namespace {

/// How far a way of taking a message got.
enum class Outcome { NotTaken, Done, Failed };

bool PostProblem(t_object* x, const std::string& text) {
    PostRow(RowKind::Error, object_classname(x)->s_name, text.c_str());
    return false;
}

std::string Quoted(const t_symbol* symbol) { return '"' + std::string(symbol->s_name) + '"'; }

struct Message {
    t_object* x;
    t_symbol* selector;
    long ac;
    t_atom* av;
};

Outcome TryMethod(const Message& message, t_symbol* name) {
    const t_messlist* const entry = FindMessage(message.x, name);
    if (entry == nullptr || entry->m_type[0] == A_CANT) return Outcome::NotTaken;
    const char* const problem = CallTyped(message.x, *entry, message.selector, message.ac, message.av, nullptr);
    if (problem == nullptr) return Outcome::Done;
    PostProblem(message.x, std::string(problem) + " arguments for message " + Quoted(message.selector));
    return Outcome::Failed;
}

Outcome TryOwnMethod(const Message& message) { return TryMethod(message, message.selector); }

/// An object that knows only one kind of number takes the other as well, and a list of one number is that number.
Outcome TryAsNumber(const Message& message) {
    t_symbol* const integer = gensym("int");
    t_symbol* const fraction = gensym("float");
    if (message.selector == integer) return TryMethod({message.x, fraction, message.ac, message.av}, fraction);
    if (message.selector == fraction) return TryMethod({message.x, integer, message.ac, message.av}, integer);
    if (message.selector != gensym("list") || message.ac != 1) return Outcome::NotTaken;
    t_symbol* const kind = message.av->a_type == A_FLOAT ? fraction : integer;
    const Message number{message.x, kind, message.ac, message.av};
    const Outcome outcome = TryOwnMethod(number);
    return outcome == Outcome::NotTaken ? TryAsNumber(number) : outcome;
}

Outcome TrySetAttribute(const Message& message) {
    if (object_attr_get(message.x, message.selector) == nullptr) return Outcome::NotTaken;
    if (object_attr_usercanset(message.x, message.selector) == 0) {
        PostProblem(message.x, "attribute " + Quoted(message.selector) + " can not be set");
        return Outcome::Failed;
    }
    if (object_attr_setvalueof(message.x, message.selector, message.ac, message.av) == MAX_ERR_NONE)
        return Outcome::Done;
    PostProblem(message.x, "attribute " + Quoted(message.selector) + " does not take this value");
    return Outcome::Failed;
}

/// "get" and an attribute's name: the answer is the attribute's name and value.
Outcome TryGetAttribute(const Message& message) {
    const std::string name = message.selector->s_name;
    if (!name.starts_with("get")) return Outcome::NotTaken;
    t_symbol* const attribute = gensym(name.substr(3).c_str());
    if (object_attr_get(message.x, attribute) == nullptr) return Outcome::NotTaken;
    long ac = 0;
    t_atom* av = nullptr;
    const bool readable = object_attr_usercanget(message.x, attribute) != 0;
    if (!readable || object_attr_getvalueof(message.x, attribute, &ac, &av) != MAX_ERR_NONE) {
        PostProblem(message.x, "attribute " + Quoted(attribute) + " can not be read");
        return Outcome::Failed;
    }
    object_obex_dumpout(message.x, attribute, ac, av);
    sysmem_freeptr(av);
    return Outcome::Done;
}

Outcome TryAnything(const Message& message) { return TryMethod(message, gensym("anything")); }

bool Deliver(unsigned inlet, const Message& message);

/// A list without a taker: one number per inlet, the left one last because it is the one that sets objects to work.
Outcome TrySpreading(const Message& message) {
    const bool isNumbers = std::all_of(message.av, message.av + message.ac,
                                       [](const t_atom& a) { return a.a_type == A_LONG || a.a_type == A_FLOAT; });
    if (message.selector != gensym("list") || message.ac < 2 || !isNumbers) return Outcome::NotTaken;
    bool taken = true;
    const ScopedInlet scope(message.x, 0);
    const long count = std::min(message.ac, static_cast<long>(GetInlets(message.x).size()));
    for (long i = count - 1; i >= 0 && scope.OwnerLives(); --i) {
        t_symbol* const kind = gensym(message.av[i].a_type == A_FLOAT ? "float" : "int");
        taken = Deliver(static_cast<unsigned>(i), {message.x, kind, 1, message.av + i}) && taken;
    }
    return taken ? Outcome::Done : Outcome::Failed;
}

bool Deliver(unsigned inlet, const Message& arriving) {
    const ScopedInlet scope(arriving.x, inlet);
    const Message message{arriving.x, scope.Translate(arriving.selector), arriving.ac, arriving.av};
    for (const auto attempt :
         {TryOwnMethod, TryAsNumber, TrySetAttribute, TryGetAttribute, TryAnything, TrySpreading}) {
        const Outcome outcome = attempt(message);
        if (outcome != Outcome::NotTaken) return outcome == Outcome::Done;
    }
    return PostProblem(message.x, "doesn't understand " + Quoted(message.selector));
}

}  // namespace

bool SendMessage(t_object* x, unsigned inlet, t_symbol* selector, long ac, t_atom* av) {
    if (NOGOOD(x) || selector == nullptr || ac < 0 || (ac > 0 && av == nullptr)) return false;
    return Deliver(inlet, {x, selector, ac, av});
}

method FindMethod(t_object* x, t_symbol* selector) {
    const t_messlist* const entry = FindMessage(x, selector);
    return entry != nullptr ? entry->m_fun : nullptr;
}

}  // namespace velmohost

using namespace velmohost;

extern "C" void* typedmess(t_object* op, t_symbol* msg, short argc, t_atom* argv) try {
    SendMessage(op, 0, msg, argc, argv);
    return nullptr;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}
