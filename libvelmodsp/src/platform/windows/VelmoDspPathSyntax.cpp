#include "platform/VelmoDspPathSyntax.h"

namespace velmodsp {
namespace {

bool IsLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

}  // namespace

String WithForwardSlashes(const String& path) {
    String converted = path;
    converted.Replace("\\", "/");
    return converted;
}

unsigned long PathRootLength(const String& path) {
    if (path.StartsWith('/')) return 1;
    const bool startsWithDrive = path.Length() >= 3 && IsLetter(path[0]) && path[1] == ':' && path[2] == '/';
    return startsWithDrive ? 3 : 0;
}

}  // namespace velmodsp
