#pragma once

#include <string>

#include "files/VelmoDspFile.h"

namespace velmohost {

/// The library's file for a path as the system reads it: "~" and backslashes in it stand for themselves.
velmodsp::File LibraryFile(const std::string& path);

/// Whether two paths lead to the same file, through links of either kind too. False when one of them does not exist.
bool IsSameFile(const std::string& path, const std::string& otherPath);

}  // namespace velmohost
