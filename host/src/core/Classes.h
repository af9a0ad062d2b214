#pragma once

#include <string>
#include <vector>

#include "ext.h"
#include "ext_obex.h"

namespace velmohost {

/// One message of a class.
struct MessageInfo {
    std::string name;
    std::vector<short> types;  ///< e_max_atomtypes of the arguments

    /// Whether a user can send it.
    bool IsUsers() const { return types.empty() || types.front() != A_CANT; }
};

/// The messages of a class in the order in which it added them. Main thread.
std::vector<MessageInfo> GetMessages(t_class* c);

/// The attribute objects of a class, which stay its own, in the order in which it added them. Main thread.
std::vector<t_object*> GetClassAttributes(t_class* c);

/// The class registered under a name or alias; null when there is none. Main thread.
t_class* FindClass(const std::string& nameSpace, const std::string& name);

}  // namespace velmohost
