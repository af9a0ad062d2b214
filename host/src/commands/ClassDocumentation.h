#pragma once

#include <string>
#include <vector>

#include "ext.h"

namespace velmohost {

/// The text of atoms for reading: a lone symbol as it stands, all else as it would be typed. Main thread.
std::string PlainText(long ac, const t_atom* av);

/// The property of an attribute ("label", "default", …); no atoms when it has none of that name. Main thread.
std::vector<t_atom> GetPropertyAtoms(t_object* attribute, const char* property);

/// The same as text.
std::string GetProperty(t_object* attribute, const char* property);

/// The same for an attribute of a class given by its name; empty when the class has no such attribute.
std::string GetClassProperty(t_class* c, const char* attribute, const char* property);

/// What a class tells of one of its messages.
struct MessageDocumentation {
    struct Argument {
        std::string description, type;
    };
    std::string description;
    std::vector<Argument> arguments;
};

/// The documentation that a class keeps of a message: in the dictionary "methods" of its attribute "classdescription",
/// as pairs of atoms, the description first and then each argument's with its type. Empty when there is none. Main
/// thread.
MessageDocumentation GetMessageDocumentation(t_class* c, const std::string& message);

}  // namespace velmohost
