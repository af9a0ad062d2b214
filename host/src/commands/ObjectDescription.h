#pragma once

#include <string>
#include <vector>

#include "ext.h"

namespace velmohost {

class Box;

/// What an object tells of itself, read from it and its class at run time. Texts are plain: markup is stripped, and a
/// line break in them is one that the author wants.
struct ObjectDescription {
    struct Connector {
        std::string type;    ///< "signal", "int", …; empty for any message
        std::string assist;  ///< the object's help text, may be empty
    };
    struct Attribute {
        std::string name, type, label, description;
        std::vector<t_atom> defaultValue, minimum, maximum;  ///< empty when there is none
        std::vector<std::string> choices;
        bool isReadable = false, isSettable = false;  ///< by messages
    };
    struct Argument {
        std::string type, description;
    };
    struct Message {
        std::string name, description;
        std::string arguments;                      ///< as the host checks them: "int [symbol]"
        std::vector<Argument> documentedArguments;  ///< as the object's author describes them
    };

    std::string name, digest, description, version;
    std::vector<std::string> seeAlso;
    std::vector<Connector> inlets, outlets;
    std::vector<Attribute> attributes;  ///< those that messages can reach and that are not hidden
    std::vector<Message> messages;      ///< those that a user can send
};

/// Describes the object in a box. Main thread.
ObjectDescription Describe(const Box& box);

}  // namespace velmohost
