/// Runs a processor as a host does, a minute of sound in 64-bit blocks, and tells what that costs.
///
///     measure_load

#include <iostream>

#include "HighPass.h"
#include "velmodsp.h"

using namespace velmodsp;

int main() {
    constexpr float samplerate = 48000.0f;
    constexpr unsigned int blockSize = 64;
    constexpr double seconds = 60.0;
    constexpr auto numBlocks = static_cast<unsigned int>(seconds * samplerate / blockSize);
    double left[blockSize] = {1.0};
    double right[blockSize] = {-1.0};
    double* outs[] = {left, right};
    const double* ins[] = {left, right};

    // The main thread, before audio starts
    HighPass highPass(2, 20.0f);
    highPass.Configure(samplerate, blockSize, true);
    const short connected[] = {1, 1, 1, 1};  // inputs, then outputs
    highPass.SetInletsAndOutletsStatus(connected);
    highPass.PrintDspStatus(std::cout);

    StopWatch watch;
    for (unsigned int block = 0; block < numBlocks; ++block) {
        // The audio thread, once per block
        const long mute = 0, bypass = 0, disabled = 0;
        highPass.Perform(outs, ins, blockSize, mute, bypass, disabled);
    }
    const double load = watch.GetCpuSeconds() / seconds;

    std::cout << Date::ToLocalText() << "\n"
              << "load      " << String(100.0 * load, 3) << " % of one core\n"
              << "speed     " << String(seconds / watch.GetSeconds(), 1) << " times as fast as it plays\n"
              << "processor " << SystemInfos::GetProcessorName() << ", " << SystemInfos::GetArchitecture() << "\n"
              << "system    " << SystemInfos::GetOperatingSystemName() << "\n";
    return 0;
}
