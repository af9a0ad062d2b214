// What a block of the host's costs in the engine, for every number of channels, block length, content and mode:
//
//   x_floor      against the same conversions, 64 to 32 bits and back, around a plain copy of every channel
//   x_reference  against plain scalar code for the same job (SignalPathReference.cpp)
//   x_finite     against the engine itself on blocks without a bad sample
//
// "items" are samples of all channels. "finite" is an engine that has met no bad sample yet, and so still looks for the
// first one; "finite, reported" is one that found it long ago.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "InTurns.h"
#include "SignalPathReference.h"
#include "dsp/VelmoDspMultiFixNaN.h"
#include "platform/VelmoDspFloatingPointControl.h"
#include "platform/VelmoDspVectorConversion.h"

namespace {

using namespace velmodsp;

struct Shape {
    unsigned int numChannels;
    unsigned long blockSize;
    std::size_t NumSamples() const { return numChannels * blockSize; }
};

enum class Content { Finite, FiniteReported, OneBadABlock, OneInHundred, OneInTwo, AllBad };

constexpr struct {
    Content content;
    const char* name;
} Contents[]{{Content::Finite, "finite"},
             {Content::FiniteReported, "finite_reported"},
             {Content::OneBadABlock, "one_a_block"},
             {Content::OneInHundred, "1%"},
             {Content::OneInTwo, "50%"},
             {Content::AllBad, "all_bad"}};

/// One block of all channels, in the host's samples.
struct HostBlock {
    explicit HostBlock(const Shape& shape) : samples(shape.NumSamples()) {
        for (std::size_t k = 0; k < shape.numChannels; ++k) channels.push_back(&samples[k * shape.blockSize]);
    }
    const double** Ins() { return const_cast<const double**>(channels.data()); }

    std::vector<double> samples;
    std::vector<double*> channels;
};

/// Seeded noise with NaN and infinities as `content` has it, in blocks that follow each other in a ring. So many that
/// no branch predictor learns where the bad samples are.
class Signal {
public:
    Signal(const Shape& shape, Content content) : random(1) {
        constexpr std::size_t samplesInRing = 2048;
        std::size_t numBlocks = 1;
        while (numBlocks * shape.NumSamples() < samplesInRing) numBlocks *= 2;
        for (std::size_t i = 0; i < numBlocks; ++i) Fill(ring.emplace_back(shape), shape, content);
    }

    /// The next block; the ring's length is a power of two.
    const double** Next() { return ring[next++ & (ring.size() - 1)].Ins(); }

private:
    void Fill(HostBlock& block, const Shape& shape, Content content) {
        for (double* channel : block.channels) {
            const std::size_t onlyBad = random() % shape.blockSize;
            for (std::size_t i = 0; i < shape.blockSize; ++i) {
                channel[i] = IsBad(content, i == onlyBad) ? Bad() : static_cast<double>(random()) / 2147483648.0 - 1.0;
            }
        }
    }

    bool IsBad(Content content, bool isOnlyOne) {
        switch (content) {
            case Content::OneBadABlock:
                return isOnlyOne;
            case Content::OneInHundred:
                return random() % 100 == 0;
            case Content::OneInTwo:
                return random() % 2 == 0;
            case Content::AllBad:
                return true;
            default:
                return false;
        }
    }

    double Bad() {
        constexpr double inf = std::numeric_limits<double>::infinity();
        const double bad[]{std::numeric_limits<double>::quiet_NaN(), inf, -inf};
        return bad[random() % 3];
    }

    std::mt19937 random;
    std::vector<HostBlock> ring;
    std::size_t next = 0;
};

/// An engine with all it needs, ready to perform.
class Path {
public:
    Path(const Shape& shape, Content content, bool lastValue)
        : signal(shape, content), out(shape), engine(shape.numChannels), blockSize(shape.blockSize) {
        engine.SetMode(lastValue ? "lastvalue" : "givenvalue");
        engine.Configure(48000.0f, static_cast<unsigned int>(blockSize), true);
        engine.SetInletsAndOutletsStatus(std::vector<short>(2 * shape.numChannels, 1).data());
        if (content != Content::Finite) {
            Signal allBad(shape, Content::AllBad);
            engine.Perform(out.channels.data(), allBad.Next(), blockSize, 0, 0, 0);
        }
    }

    void Perform() { engine.Perform(out.channels.data(), signal.Next(), blockSize, 0, 0, 0); }

private:
    Signal signal;
    HostBlock out;
    MultiFixNaN engine;
    unsigned long blockSize;
};

/// One block of all channels in 32 bits, in memory like the engine's: every channel from the start of a cache line.
class FloatBlock {
public:
    explicit FloatBlock(const Shape& shape) : lines((shape.blockSize / lineLength + 1) * shape.numChannels) {
        for (std::size_t k = 0; k < shape.numChannels; ++k) {
            channels.push_back(lines[k * (lines.size() / shape.numChannels)].samples);
        }
    }
    float* operator[](std::size_t k) { return channels[k]; }

private:
    static constexpr std::size_t lineLength = 16;
    struct alignas(64) Line {
        float samples[lineLength];
    };
    std::vector<Line> lines;
    std::vector<float*> channels;
};

/// The conversions around a copy.
class Floor {
public:
    Floor(const Shape& blockShape, Content content)
        : shape(blockShape), signal(shape, content), out(shape), narrow(shape), copy(shape) {}

    void Perform() {
        const double** ins = signal.Next();
        for (unsigned int k = 0; k < shape.numChannels; ++k) {
            VectorConversion::DoubleToFloat(narrow[k], ins[k], shape.blockSize);
        }
        for (unsigned int k = 0; k < shape.numChannels; ++k) {
            std::memcpy(copy[k], narrow[k], shape.blockSize * sizeof(float));
        }
        for (unsigned int k = 0; k < shape.numChannels; ++k) {
            VectorConversion::FloatToDouble(out.channels[k], copy[k], shape.blockSize);
        }
    }

private:
    Shape shape;
    Signal signal;
    HostBlock out;
    FloatBlock narrow;
    FloatBlock copy;
};

/// The plain loops (SignalPathReference.cpp), with a signal of their own.
class Reference {
public:
    Reference(const Shape& shape, Content content, bool lastValue)
        : signal(shape, content),
          out(shape),
          path(shape.numChannels, shape.blockSize, lastValue),
          blockSize(shape.blockSize) {}

    void Perform() { path.Perform(out.channels.data(), signal.Next(), blockSize); }

private:
    Signal signal;
    HostBlock out;
    bench::ReferencePath path;
    unsigned long blockSize;
};

void BM_SignalPath(benchmark::State& state, const Shape& shape, Content content, bool lastValue) {
    const ScopedFloatingPointControl restoreAtEnd;
    Path path(shape, content, lastValue), finite(shape, Content::Finite, lastValue);
    Floor floor(shape, content);
    Reference reference(shape, content, lastValue);
    bench::InTurns(
        state, shape.NumSamples(), [&] { path.Perform(); }, bench::Against{"finite", [&] { finite.Perform(); }},
        bench::Against{"floor", [&] { floor.Perform(); }}, bench::Against{"reference", [&] { reference.Perform(); }});
}

const bool registered = [] {
    for (const bool lastValue : {true, false}) {
        for (const unsigned int numChannels : {1u, 2u, 8u, 64u, 250u}) {
            for (const unsigned long blockSize : {16ul, 64ul, 512ul, 2048ul}) {
                for (const auto& [content, contentName] : Contents) {
                    const std::string name = std::string(lastValue ? "lastvalue" : "givenvalue") + "/" +
                                             std::to_string(numChannels) + "x" + std::to_string(blockSize) + "/" +
                                             contentName;
                    benchmark::RegisterBenchmark(name.c_str(), BM_SignalPath, Shape{numChannels, blockSize}, content,
                                                 lastValue)
                        ->UseManualTime()
                        ->Iterations(15);  // rounds; there are too many cases for the usual time each
                }
            }
        }
    }
    return true;
}();

}  // namespace
