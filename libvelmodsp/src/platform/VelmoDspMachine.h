#pragma once

#include "text/VelmoDspString.h"

namespace velmodsp {

/// What this machine is, as its system tells; "" and 0 for what it does not tell. Any thread; not for the audio thread.
namespace Machine {

/// Name and version: "Debian GNU/Linux 12 (bookworm)".
String OperatingSystem();

/// Name of the processor by its maker.
String Processor();

/// The instruction set as the system calls it: "x86_64", "arm64".
String Architecture();

/// In bytes.
unsigned long long PhysicalMemory();

}  // namespace Machine

}  // namespace velmodsp
