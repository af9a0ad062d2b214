#pragma once

#include "text/VelmoDspString.h"

namespace velmodsp {

/// The path with "/" as separator, where the system also knows another one.
String WithForwardSlashes(const String& path);

/// Length of the part that makes a path absolute: that of "/", or of "C:/" where paths begin with a drive.
/// 0 for a relative path. Expects "/" as separator.
unsigned long PathRootLength(const String& path);

}  // namespace velmodsp
