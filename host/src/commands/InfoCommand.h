#pragma once

#include <string>
#include <vector>

namespace velmohost {

/// What `velmohost info` was asked for.
struct InfoOptions {
    std::string boxText;
    std::vector<std::string> paths;  ///< --path: searched for plug-ins first
    bool asJson = false;             ///< --json: for machines
};

/// Creates the object and tells on the standard output what it is: digest, description, see-also, version, inlets and
/// outlets, attributes, messages. For machines as a JSON object alone: the rows of the Max window then go to standard
/// error. Main thread.
/// @returns the exit status: 0 when done, 1 when the object could not be created
int ShowInfo(const InfoOptions& options);

}  // namespace velmohost
