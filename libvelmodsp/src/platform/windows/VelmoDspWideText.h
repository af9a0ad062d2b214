#pragma once

#include <string>

#include "text/VelmoDspString.h"

namespace velmodsp {

/// UTF-8 text as the system's own functions want it. Bytes that are no UTF-8 become replacement characters.
std::wstring ToWide(const String& text);

/// The system's text as UTF-8.
String FromWide(const std::wstring& text);

}  // namespace velmodsp
