#include "utils/VelmoDspInfos.h"

#include <gtest/gtest.h>

#include <string>

#include "support/FileBytes.h"
#include "support/OutputOf.h"

namespace velmodsp {
namespace {

TEST(Infos, KeepTheFactsThatTextsAreMadeOf) {
    EXPECT_EQ(ApiInfos::GetFloatingPointPrecision(), 32);
    EXPECT_EQ(SystemInfos::GetOperatingSystemNameWithoutVersion(), "Mac OS ");
}

#ifdef __linux__
TEST(SystemInfos, TellTheSystemAndTheMachine) {
    EXPECT_EQ(SystemInfos::GetOperatingSystemName(), OutputOf(". /etc/os-release; printf %s \"$PRETTY_NAME\"").c_str());
    EXPECT_EQ(SystemInfos::GetArchitecture(), OutputOf("printf $(uname -m)").c_str());
    EXPECT_EQ(std::to_string(SystemInfos::GetNumLogicalCores()),
              OutputOf("printf $(grep -c ^processor /proc/cpuinfo)"));

    const std::string processor = SystemInfos::GetProcessorName().Str();
    EXPECT_NE(ReadBytes("/proc/cpuinfo").find(": " + processor + "\n"), std::string::npos) << processor;

    // A container may be shown less than the machine has.
    const auto shown = 1024ull * std::stoull(OutputOf("sed -n 's/^MemTotal: *\\([0-9]*\\) kB/\\1/p' /proc/meminfo"));
    EXPECT_GE(SystemInfos::GetPhysicalMemory(), shown);
    EXPECT_LT(SystemInfos::GetPhysicalMemory(), 100 * shown);
}
#endif

}  // namespace
}  // namespace velmodsp
