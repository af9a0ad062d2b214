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

/// Keeps a thread of its own at work until it has taken that much processor time.
void WorkInAnotherThread(double cpuSeconds) {
    std::thread([=] {
        const double end = CpuSecondsOfThisThread() + cpuSeconds;
        while (CpuSecondsOfThisThread() < end) {
        }
    }).join();
}

TEST(StopWatch, CountsTheProcessorTimeOfAllThreads) {
    StopWatch watch;
    const double before = CpuSecondsOfThisThread();
    WorkInAnotherThread(0.05);
    const double ownWork = CpuSecondsOfThisThread() - before;
    EXPECT_GE(watch.GetCpuSeconds(), 0.05);
    EXPECT_LT(watch.GetCpuSeconds(), 0.075 + ownWork);  // starting and ending the thread takes far less than 25 ms
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
