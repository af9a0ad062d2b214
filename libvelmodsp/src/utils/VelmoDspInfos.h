#pragma once

#include "text/VelmoDspString.h"

namespace velmodsp {

/// Facts about this library.
class ApiInfos {
public:
    /// Width of the library's samples in bits.
    static int GetFloatingPointPrecision();
};

/// Facts about the system and the machine, for texts. A measured load means nothing without them:
///
///     std::cout << "2 % of one core of " << SystemInfos::GetProcessorName() << "\n";
///
/// What the system does not tell is "" or 0. Any thread; not for the audio thread.
class SystemInfos {
public:
    /// Name of the system family that the suite's texts speak of, ready for a version to follow: it ends with a blank.
    static String GetOperatingSystemNameWithoutVersion();

    /// Name and version of the system that runs: "Debian GNU/Linux 12 (bookworm)", "macOS 14.5", "Windows 10.0.22631".
    static String GetOperatingSystemName();

    /// The processor's name by its maker; that of the board on some ARM machines.
    static String GetProcessorName();

    /// The instruction set that programs see, as the system calls it: "x86_64", "arm64", "aarch64".
    static String GetArchitecture();

    /// Hardware threads, of all cores that are switched on.
    static unsigned int GetNumLogicalCores();

    /// Memory of the machine in bytes, whoever uses it.
    static unsigned long long GetPhysicalMemory();
};

}  // namespace velmodsp
