/// The service messages that every object of the suite answers. Main thread.
#pragma once

#include "velmomax_api.h"

namespace velmomax {

/// Adds the service messages to a class, with their documentation. After the class's documentation attributes were
/// declared, since the documentation is kept on one of them.
///
///   generatexml               writes the reference page (velmomax_xml.h)
///   version                   posts the version that the label of the attribute "externalversion" holds
///   postattributes [name]     posts the value of one attribute, or of all that make up the object's state
///   getvalueof, setvalueof    read and restore the state, for pattr objects (velmomax_state.h)
///   preset, recallpreset      store and restore the state, for preset objects (velmomax_state.h)
///   exportdict [path]         writes the state to a JSON file (velmomax_json.h)
///   dumpdict [name...]        sends the state as a dictionary (velmomax_dictionary.h)
///   dictionary name           takes the state over from a dictionary; documented under the name "readdict"
void AddCommonMethods(t_class* c) noexcept;

/// Handler of "generatexml".
void generatexml(t_object* x) noexcept;

/// Handler of "version".
void postversion(t_object* x) noexcept;

/// Handler of "postattributes".
void postattributes(t_object* x, t_symbol* s, long argc, t_atom* argv) noexcept;

/// Posts how many attributes make up the object's state, then each one's value, by name.
/// @throws std::bad_alloc
void PostValueOfAllAttributes(t_object* x);

/// Posts the attribute's name and value; an error when `x` has no attribute of that name.
/// @throws std::bad_alloc
void PostValueOfAttribute(t_object* x, t_symbol* name);

}  // namespace velmomax
