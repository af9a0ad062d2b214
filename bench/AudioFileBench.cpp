// How fast sound files are written and read, against plain writes and reads of the same bytes.
//
// Each row streams seeded noise in blocks of 4096 frames, as the headless host does. "floor" rows move as many bytes
// with the system's own calls and convert nothing; the rows of a depth stand right below their floor, so that both are
// measured under the same load. Files lie in the temporary folder and stay in the system's cache.
//
//     AudioFileBench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "audiofiles/VelmoDspAudioFileReader.h"
#include "audiofiles/VelmoDspAudioFileWriter.h"
#include "files/VelmoDspFile.h"
#include "utils/VelmoDspAudioBuffer.h"

namespace {

using namespace velmodsp;

constexpr unsigned long BlockSize = 4096;  // frames
constexpr unsigned long NumBlocks = 256;   // about 22 seconds at 48 kHz

std::string BenchPath(const std::string& name) {
    return (std::filesystem::temp_directory_path() / ("velmo-bench-" + std::to_string(getpid()) + name)).string();
}

std::unique_ptr<AudioBuffer> NoiseBlock(unsigned int numChannels) {
    auto block = std::make_unique<AudioBuffer>(numChannels, BlockSize, true);
    std::mt19937 random(1);
    std::uniform_real_distribution<float> noise(-1.0f, 1.0f);
    for (unsigned int k = 0; k < numChannels; ++k)
        for (unsigned long i = 0; i < BlockSize; ++i) block->GetChannel(k)[i] = noise(random);
    return block;
}

void WriteSoundFile(const std::string& path, const AudioBuffer& block, int bits) {
    const auto writer =
        AudioFileWriter::CreateWriterFor(File(String(path)), 48000, block.GetNumChannels(), bits, false);
    for (unsigned long i = 0; i < NumBlocks; ++i) writer->WriteSamples(block, 0, BlockSize);
}

/// Arguments of every row: bits, channels.
struct Row {
    explicit Row(const benchmark::State& state)
        : bits(static_cast<int>(state.range(0))), numChannels(static_cast<unsigned int>(state.range(1))) {}
    std::size_t BytesPerBlock() const { return BlockSize * numChannels * static_cast<unsigned int>(bits) / 8; }

    int bits;
    unsigned int numChannels;
};

void SetBytes(benchmark::State& state, const Row& row) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(row.BytesPerBlock() * NumBlocks));
}

void BM_WriteFloor(benchmark::State& state) {
    const Row row(state);
    const std::string path = BenchPath(".raw");
    const std::vector<char> bytes(row.BytesPerBlock(), 'x');
    for (auto _ : state) {
        const int file = open(path.c_str(), O_WRONLY | O_CREAT, 0644);
        for (unsigned long i = 0; i < NumBlocks; ++i)
            if (write(file, bytes.data(), bytes.size()) < 0) state.SkipWithError("cannot write");
        close(file);
        state.PauseTiming();
        std::filesystem::remove(path);
        state.ResumeTiming();
    }
    SetBytes(state, row);
}

void BM_Write(benchmark::State& state, const char* extension) {
    const Row row(state);
    const std::string path = BenchPath(extension);
    const auto block = NoiseBlock(row.numChannels);
    for (auto _ : state) {
        WriteSoundFile(path, *block, row.bits);
        state.PauseTiming();
        std::filesystem::remove(path);
        state.ResumeTiming();
    }
    SetBytes(state, row);
}

void BM_ReadFloor(benchmark::State& state) {
    const Row row(state);
    const std::string path = BenchPath(".wav");
    WriteSoundFile(path, *NoiseBlock(row.numChannels), row.bits);
    std::vector<char> bytes(row.BytesPerBlock());
    for (auto _ : state) {
        const int file = open(path.c_str(), O_RDONLY);
        while (read(file, bytes.data(), bytes.size()) > 0) benchmark::DoNotOptimize(bytes.data());
        close(file);
    }
    std::filesystem::remove(path);
    SetBytes(state, row);
}

void BM_Read(benchmark::State& state, const char* extension) {
    const Row row(state);
    const std::string path = BenchPath(extension);
    const auto block = NoiseBlock(row.numChannels);
    WriteSoundFile(path, *block, row.bits);
    const auto reader = AudioFileReader::CreateReaderFor(File(String(path)));
    for (auto _ : state) {
        for (unsigned long i = 0; i < NumBlocks; ++i) {
            reader->ReadSamples(*block, 0, BlockSize, i * BlockSize);
            benchmark::DoNotOptimize(block->GetChannel(0));
        }
    }
    std::filesystem::remove(path);
    SetBytes(state, row);
}

void RegisterRows(const std::string& name, const std::vector<std::int64_t>& arguments) {
    const auto add = [&](const std::string& what, auto function, auto... extension) {
        benchmark::RegisterBenchmark(("AudioFile/" + name + "/" + what).c_str(), function, extension...)
            ->ArgNames({"bits", "channels"})
            ->Args(arguments)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    };
    if (name == "write") {
        add("floor", BM_WriteFloor);
        add("wav", BM_Write, ".wav");
        add("aiff", BM_Write, ".aiff");
    } else {
        add("floor", BM_ReadFloor);
        add("wav", BM_Read, ".wav");
        add("aiff", BM_Read, ".aiff");
    }
}

const bool registered = [] {
    for (const char* name : {"write", "read"})
        for (std::int64_t channels : {1, 2, 32})
            for (std::int64_t bits : {8, 16, 24, 32}) RegisterRows(name, {bits, channels});
    return true;
}();

}  // namespace
