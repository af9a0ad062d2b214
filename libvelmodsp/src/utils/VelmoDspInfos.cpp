#include "utils/VelmoDspInfos.h"

#include <climits>
#include <thread>

#include "platform/VelmoDspMachine.h"

namespace velmodsp {

int ApiInfos::GetFloatingPointPrecision() { return static_cast<int>(sizeof(float) * CHAR_BIT); }

String SystemInfos::GetOperatingSystemNameWithoutVersion() { return "Mac OS "; }

String SystemInfos::GetOperatingSystemName() { return Machine::OperatingSystem(); }

String SystemInfos::GetProcessorName() { return Machine::Processor(); }

String SystemInfos::GetArchitecture() { return Machine::Architecture(); }

unsigned int SystemInfos::GetNumLogicalCores() { return std::thread::hardware_concurrency(); }

unsigned long long SystemInfos::GetPhysicalMemory() { return Machine::PhysicalMemory(); }

}  // namespace velmodsp
