#include "utils/VelmoDspStopWatch.h"

#include <gtest/gtest.h>
#include <time.h>

#include <chrono>
#include <thread>

namespace velmodsp {
namespace {

double CpuSecondsOfThisThread() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

TEST(StopWatch, CountsTheProcessorTimeOfAllThreads) {
    StopWatch watch;
    std::thread([] {
        while (CpuSecondsOfThisThread() < 0.05) {
        }
    }).join();
    EXPECT_GE(watch.GetCpuSeconds(), 0.05);
    EXPECT_LT(watch.GetCpuSeconds(), 0.1);  // starting and ending the thread takes far less
    EXPECT_GE(watch.GetSeconds(), 0.05);
    watch.Restart();
    EXPECT_LT(watch.GetCpuSeconds(), 0.05);
}

TEST(StopWatch, CountsNoProcessorTimeWhileTheProcessSleeps) {
    const StopWatch watch;
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    const double passed = watch.GetSeconds();
    EXPECT_GE(passed, 0.1);
    EXPECT_LT(watch.GetCpuSeconds(), 0.05);
    EXPECT_GE(watch.GetSeconds(), passed);
}

}  // namespace
}  // namespace velmodsp
