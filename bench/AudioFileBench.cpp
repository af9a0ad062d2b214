// How long it takes to write and to read sound files, as a multiple of what others need for the same sound in the same
// turn:
//
//   x_libsndfile   libsndfile with plain loops between its interleaved frames and separate channels
//   x_floor        the system's calls for as many bytes, with nothing converted
//
// Each call opens a file, moves a sound through it in blocks, as the headless host does, and closes it. The samples are
// seeded noise a little beyond full scale, so that there is something to clip. Files lie in memory where the system has
// a folder for that (/dev/shm), else in the temporary folder and the system's cache. Written files are removed within
// the measured time, because their memory is part of what writing costs. Run it with run.sh.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sndfile.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "InTurns.h"
#include "audiofiles/VelmoDspAudioFileReader.h"
#include "audiofiles/VelmoDspAudioFileWriter.h"
#include "files/VelmoDspFile.h"
#include "utils/VelmoDspAudioBuffer.h"

namespace {

using namespace velmodsp;

constexpr unsigned long BlockSize = 4096;            // frames
constexpr unsigned long SamplesPerFile = 1ul << 20;  // of all channels

struct Case {
    const char* encoding;
    const char* extension;
    int sndfileFormat;
    int bits;
    unsigned int numChannels;

    unsigned long NumBlocks() const { return SamplesPerFile / numChannels / BlockSize; }
    std::size_t BytesPerBlock() const { return BlockSize * numChannels * static_cast<unsigned int>(bits) / 8; }
};

std::string BenchPath(const std::string& name) {
    namespace fs = std::filesystem;
    static const fs::path folder = fs::exists("/dev/shm") ? "/dev/shm" : fs::temp_directory_path();
    return folder / ("velmo-bench-" + std::to_string(getpid()) + name);
}

/// A file of the benchmark, gone at the end.
class TemporaryPath {
public:
    explicit TemporaryPath(const std::string& name) : path(BenchPath(name)) {}
    ~TemporaryPath() { Remove(); }
    void Remove() const { unlink(path.c_str()); }
    const char* C_Str() const { return path.c_str(); }
    File AsFile() const { return File(String(path)); }

private:
    std::string path;
};

std::unique_ptr<AudioBuffer> NoiseBlock(unsigned int numChannels) {
    auto block = std::make_unique<AudioBuffer>(numChannels, BlockSize, true);
    std::mt19937 random(1);
    std::uniform_real_distribution<float> noise(-1.1f, 1.1f);
    for (unsigned int k = 0; k < numChannels; ++k)
        for (unsigned long i = 0; i < BlockSize; ++i) block->GetChannel(k)[i] = noise(random);
    return block;
}

void Write(const TemporaryPath& path, const Case& format, const AudioBuffer& block) {
    const auto writer = AudioFileWriter::CreateWriterFor(path.AsFile(), 48000, format.numChannels, format.bits, false);
    for (unsigned long i = 0; i < format.NumBlocks(); ++i)
        if (!writer->WriteSamples(block, 0, BlockSize)) throw std::runtime_error("cannot write");
}

void Read(const TemporaryPath& path, const Case& format, AudioBuffer& block) {
    const auto reader = AudioFileReader::CreateReaderFor(path.AsFile());
    for (unsigned long i = 0; i < format.NumBlocks(); ++i) {
        if (!reader->ReadSamples(block, 0, BlockSize, i * BlockSize)) throw std::runtime_error("cannot read");
        benchmark::ClobberMemory();
    }
}

struct CloseSndfile {
    void operator()(SNDFILE* file) const { sf_close(file); }
};
using Sndfile = std::unique_ptr<SNDFILE, CloseSndfile>;

Sndfile OpenSndfile(const TemporaryPath& path, int mode, SF_INFO info) {
    Sndfile file(sf_open(path.C_Str(), mode, &info));
    if (!file) throw std::runtime_error(sf_strerror(nullptr));
    return file;
}

void WriteWithSndfile(const TemporaryPath& path, const Case& format, const AudioBuffer& block,
                      std::vector<float>& frames) {
    const std::size_t numChannels = format.numChannels;
    SF_INFO info = {};
    info.samplerate = 48000;
    info.channels = static_cast<int>(numChannels);
    info.format = format.sndfileFormat;
    const Sndfile file = OpenSndfile(path, SFM_WRITE, info);
    sf_command(file.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
    sf_command(file.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);  // it would look at every sample once more
    for (unsigned long n = 0; n < format.NumBlocks(); ++n) {
        for (std::size_t k = 0; k < numChannels; ++k) {
            const float* channel = block.GetChannel(static_cast<unsigned int>(k));
            for (std::size_t i = 0; i < BlockSize; ++i) frames[i * numChannels + k] = channel[i];
        }
        if (sf_writef_float(file.get(), frames.data(), BlockSize) != BlockSize)
            throw std::runtime_error("libsndfile cannot write");
    }
}

void ReadWithSndfile(const TemporaryPath& path, const Case& format, AudioBuffer& block, std::vector<float>& frames) {
    const std::size_t numChannels = format.numChannels;
    const Sndfile file = OpenSndfile(path, SFM_READ, {});
    for (unsigned long n = 0; n < format.NumBlocks(); ++n) {
        if (sf_readf_float(file.get(), frames.data(), BlockSize) != BlockSize)
            throw std::runtime_error("libsndfile cannot read");
        for (std::size_t k = 0; k < numChannels; ++k) {
            float* channel = block.GetChannel(static_cast<unsigned int>(k));
            for (std::size_t i = 0; i < BlockSize; ++i) channel[i] = frames[i * numChannels + k];
        }
        benchmark::ClobberMemory();
    }
}

void WriteBytes(const TemporaryPath& path, const Case& format, const std::vector<char>& bytes) {
    const int file = open(path.C_Str(), O_WRONLY | O_CREAT, 0644);
    for (unsigned long i = 0; i < format.NumBlocks(); ++i)
        if (write(file, bytes.data(), bytes.size()) < 0) throw std::runtime_error("cannot write");
    close(file);
}

void ReadBytes(const TemporaryPath& path, std::vector<char>& bytes) {
    const int file = open(path.C_Str(), O_RDONLY);
    while (read(file, bytes.data(), bytes.size()) > 0) benchmark::ClobberMemory();
    close(file);
}

/// One block in every form that the sides of a case need.
struct Blocks {
    explicit Blocks(const Case& format)
        : samples(NoiseBlock(format.numChannels)),
          frames(BlockSize * format.numChannels),
          bytes(format.BytesPerBlock()) {}
    std::unique_ptr<AudioBuffer> samples;
    std::vector<float> frames;
    std::vector<char> bytes;
};

void BM_Write(benchmark::State& state, const Case& format) {
    Blocks block(format);
    const TemporaryPath path(format.extension);
    const auto removing = [&](const auto& write) {
        return [&] {
            write();
            path.Remove();
        };
    };
    const auto work = [&] { Write(path, format, *block.samples); };
    const auto sndfile = [&] { WriteWithSndfile(path, format, *block.samples, block.frames); };
    const auto floor = [&] { WriteBytes(path, format, block.bytes); };
    bench::InTurns(state, SamplesPerFile, removing(work), bench::Against{"libsndfile", removing(sndfile)},
                   bench::Against{"floor", removing(floor)});
}

void BM_Read(benchmark::State& state, const Case& format) {
    Blocks block(format);
    const TemporaryPath path(format.extension);
    WriteWithSndfile(path, format, *block.samples, block.frames);
    bench::InTurns(
        state, SamplesPerFile, [&] { Read(path, format, *block.samples); },
        bench::Against{"libsndfile", [&] { ReadWithSndfile(path, format, *block.samples, block.frames); }},
        bench::Against{"floor", [&] { ReadBytes(path, block.bytes); }});
}

using Benchmarked = void (*)(benchmark::State&, const Case&);

void Register(const std::string& what, Benchmarked function, const Case& format) {
    const std::string name =
        what + "/" + (format.extension + 1) + "/" + format.encoding + "/channels:" + std::to_string(format.numChannels);
    benchmark::RegisterBenchmark(name.c_str(), function, format)->UseManualTime()->Unit(benchmark::kMillisecond);
}

const bool registered = [] {
    constexpr int wav = SF_FORMAT_WAV, aiff = SF_FORMAT_AIFF;
    for (unsigned int k : {1u, 2u, 32u}) {
        for (const Case& format : {Case{"8", ".wav", wav | SF_FORMAT_PCM_U8, 8, k},
                                   {"16", ".wav", wav | SF_FORMAT_PCM_16, 16, k},
                                   {"24", ".wav", wav | SF_FORMAT_PCM_24, 24, k},
                                   {"float", ".wav", wav | SF_FORMAT_FLOAT, 32, k},
                                   {"8", ".aiff", aiff | SF_FORMAT_PCM_S8, 8, k},
                                   {"16", ".aiff", aiff | SF_FORMAT_PCM_16, 16, k},
                                   {"24", ".aiff", aiff | SF_FORMAT_PCM_24, 24, k},
                                   {"32", ".aiff", aiff | SF_FORMAT_PCM_32, 32, k}}) {
            Register("read", BM_Read, format);
            Register("write", BM_Write, format);
        }
        // Read but never written.
        for (const Case& format : {Case{"32", ".wav", wav | SF_FORMAT_PCM_32, 32, k},
                                   {"float", ".aiff", aiff | SF_FORMAT_FLOAT, 32, k},
                                   {"sowt16", ".aiff", aiff | SF_FORMAT_PCM_16 | SF_ENDIAN_LITTLE, 16, k}})
            Register("read", BM_Read, format);
    }
    return true;
}();

}  // namespace
