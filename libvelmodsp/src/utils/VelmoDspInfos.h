#pragma once

#include "text/VelmoDspString.h"

namespace velmodsp {

/// Facts about this library.
class ApiInfos {
public:
    /// Width of the library's samples in bits.
    static int GetFloatingPointPrecision();
};

/// Facts about the system, for texts.
class SystemInfos {
public:
    /// Name of the system family that the suite's texts speak of, ready for a version to follow: it ends with a blank.
    static String GetOperatingSystemNameWithoutVersion();
};

}  // namespace velmodsp
