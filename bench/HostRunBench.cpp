// How long `velmohost run` takes, the whole program from its start to its end, to stream a sound file through
// tesk.fixnan~ into another one: as a multiple of the sound's length (`x_real_time`), and of a plain copy of the file
// (`x_copy`). `items_per_second` counts samples of all channels.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "InTurns.h"
#include "files/VelmoDspFile.h"
#include "utils/VelmoDspAudioBuffer.h"

namespace {

using namespace velmodsp;
using bench::Against;

constexpr double SampleRate = 48000.0;
constexpr unsigned long TotalSamples = 1 << 23;  // of all channels: 32 MB

/// A sound file of noise, and room for another one beside it; both are removed in the end.
class SoundFiles {
public:
    explicit SoundFiles(unsigned int numChannels) {
        std::filesystem::create_directories(folder);
        AudioBuffer noise(numChannels, TotalSamples / numChannels, true);
        noise.FillWithNoise(1.0f);
        noise.SaveAsAudioFile(File(String(In())), SampleRate, 32, true);
    }
    ~SoundFiles() { std::filesystem::remove_all(folder); }
    SoundFiles(const SoundFiles&) = delete;
    SoundFiles& operator=(const SoundFiles&) = delete;

    std::string In() const { return (folder / "in.wav").string(); }
    std::string Out() const { return (folder / "out.wav").string(); }

private:
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("velmo-bench-" + std::to_string(getpid()));
};

void BM_HostRun(benchmark::State& state) {
    const auto numChannels = static_cast<unsigned int>(state.range(0));
    const SoundFiles files(numChannels);
    const std::string command = VELMO_HOST_PROGRAM " run 'tesk.fixnan~ @numchannels " + std::to_string(numChannels) +
                                "' --path '" VELMO_EXTERNALS_DIR "' --in '" + files.In() + "' --out '" + files.Out() +
                                "' --block " + std::to_string(state.range(1)) + " >/dev/null";
    bool failed = false;
    bench::InTurns(
        state, TotalSamples,
        [&] {
            failed = failed || std::system(command.c_str()) != 0;
            std::filesystem::remove(files.Out());
        },
        Against{"copy", [&] {
                    std::filesystem::copy_file(files.In(), files.Out());
                    std::filesystem::remove(files.Out());
                }});
    const double soundSeconds = static_cast<double>(TotalSamples) / numChannels / SampleRate;
    state.counters["x_real_time"] =
        benchmark::Counter(soundSeconds, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    if (failed) state.SkipWithError(command.c_str());
}

BENCHMARK(BM_HostRun)
    ->ArgNames({"channels", "block"})
    ->ArgsProduct({{2, 64}, {64, 512}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
