/// Documentation of messages, kept on the class itself: the class attribute "classdescription" carries a dictionary
/// "methods", in which each message's name leads to an atom array of pairs. Pair 0 is the message's description and the
/// long 0; every further pair is an argument's description and type. The dictionary keeps the order of documenting.
#pragma once

#include "velmomax_api.h"

namespace velmomax {

/// Records what the message `methodName` does. Documenting a message again replaces its entry. A class without the
/// attribute "classdescription" has no place for documentation; the text is lost silently. Main thread.
void class_doc_method(t_class* c, const char* methodName, const char* description) noexcept;

/// Adds the next argument of a message documented before, `argType` being a type name such as "symbol". Does nothing
/// for a message that is not documented. Main thread.
void class_doc_method_arg(t_class* c, const char* methodName, const char* argDescription, const char* argType) noexcept;

}  // namespace velmomax
