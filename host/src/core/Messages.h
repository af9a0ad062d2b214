#pragma once

#include "core/PluginCall.h"
#include "ext.h"

namespace velmohost {

/// Sends a message as a patcher does on a user's behalf. Looks for a method of that name (untyped ones excluded), for
/// "int" and "float" also under the other of the two, then for an attribute to set, then for "get" before an
/// attribute's name, which answers from the dump outlet, then for "anything". A list that nothing takes is spread over
/// the inlets from right to left. Main thread.
/// @param inlet where it comes in, from 0 at the left
/// @returns whether the object took it; otherwise an error row tells why not
bool SendMessage(t_object* x, unsigned inlet, t_symbol* selector, long ac, t_atom* av);

/// The function behind a message, typed or not; null when the object has none. Main thread.
method FindMethod(t_object* x, t_symbol* selector);

/// Calls an untyped method such as "assist" or "dsp64" as `void (t_object*, Args...)`, the arguments being of the
/// method's own types: cast what is not. Main thread.
/// @returns false when the object has no such method
template <class... Args>
bool CallMethod(t_object* x, t_symbol* selector, Args... args) {
    const method function = FindMethod(x, selector);
    if (function == nullptr) return false;
    CallPlugin<void>(function, x, args...);
    return true;
}

/// The same for a method with a result; `fallback` when the object has no such method.
template <class Result, class... Args>
Result CallMethodForResult(t_object* x, t_symbol* selector, Result fallback, Args... args) {
    const method function = FindMethod(x, selector);
    return function != nullptr ? CallPlugin<Result>(function, x, args...) : fallback;
}

}  // namespace velmohost
