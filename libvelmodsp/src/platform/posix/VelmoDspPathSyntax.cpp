#include "platform/VelmoDspPathSyntax.h"

namespace velmodsp {

String WithForwardSlashes(const String& path) { return path; }

unsigned long PathRootLength(const String& path) { return path.StartsWith('/') ? 1 : 0; }

}  // namespace velmodsp
