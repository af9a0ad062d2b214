#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <functional>
#include <sstream>
#include <string>

#include "dsp/VelmoDspMultiFixNaN.h"
#include "dsp/VelmoDspSampleKernels.h"
#include "platform/VelmoDspFloatingPointControl.h"

/// The promise of the whole suite, for every number that 32 bits can hold: each NaN and each infinity is replaced, and
/// nothing else is touched. Not sampled, but done with all of the 2^32, by every instruction set and by the engine.

namespace velmodsp {
namespace {

constexpr std::uint64_t numPatterns = std::uint64_t{1} << 32;
constexpr std::uint64_t numBadPatterns = std::uint64_t{1} << 24;  // two signs, all exponent bits set, 23 bits free
constexpr std::size_t blockSize = 4096;

using Bits = std::array<std::uint32_t, blockSize>;
using Samples = std::array<float, blockSize>;

bool IsBad(std::uint32_t bits) { return (bits & 0x7fffffff) >= 0x7f800000; }
bool IsSubnormal(std::uint32_t bits) { return (bits & 0x7f800000) == 0; }

/// All patterns once, `blockSize` a block: multiplying by an odd number only changes their order, so that the bad ones
/// are strewn over all positions of a vector.
Bits PatternsOfBlock(std::uint64_t block) {
    Bits bits;
    const auto first = static_cast<std::uint32_t>(block * blockSize);
    for (std::uint32_t i = 0; i < blockSize; ++i) bits[i] = (first + i) * 2654435761u;
    return bits;
}

/// What must come out for one channel's blocks, one after the other.
struct ExpectedRepair {
    bool usesGivenValue;
    std::uint32_t replacement;  // the given value, or the last finite one so far

    Bits Next(const Bits& in) {
        Bits out;
        for (std::size_t i = 0; i < blockSize; ++i) {
            out[i] = IsBad(in[i]) ? replacement : in[i];
            if (!usesGivenValue) replacement = out[i];
        }
        return out;
    }
};

std::uint64_t NumBad(const Bits& bits) {
    std::uint64_t number = 0;
    for (const std::uint32_t pattern : bits) number += IsBad(pattern);
    return number;
}

/// Where results differ from the bits that they should have, or from these in 64 bits; empty when nowhere.
template <class Sample>
std::string Difference(const Bits& in, const Bits& expected, const std::array<Sample, blockSize>& actual) {
    std::array<Sample, blockSize> wanted;
    for (std::size_t i = 0; i < blockSize; ++i) wanted[i] = static_cast<Sample>(std::bit_cast<float>(expected[i]));
    if (std::memcmp(actual.data(), wanted.data(), sizeof(wanted)) == 0) return {};
    std::ostringstream text;
    for (std::size_t i = 0; i < blockSize; ++i) {
        if (std::memcmp(&actual[i], &wanted[i], sizeof(Sample)) == 0) continue;
        text << std::hex << in[i] << " became " << std::hexfloat << actual[i] << " instead of " << wanted[i] << "; ";
    }
    return text.str();
}

/// Goes through all patterns, block by block, until a check finds a difference.
void GoThroughAllPatterns(const std::function<std::string(const Bits& in)>& check) {
    std::uint64_t numBad = 0;
    for (std::uint64_t block = 0; block < numPatterns / blockSize; ++block) {
        const Bits in = PatternsOfBlock(block);
        numBad += NumBad(in);
        ASSERT_EQ(check(in), "");
    }
    ASSERT_EQ(numBad, numBadPatterns);
}

Samples AsSamples(const Bits& bits) { return std::bit_cast<Samples>(bits); }

// ---- each instruction set

void WithEveryInstructionSet(const auto& check) {
    for (const SampleKernels* kernels : SampleKernels::Available()) {
        SCOPED_TRACE(kernels->name);
        check(*kernels);
    }
}

TEST(ExhaustiveKernels, ReplaceByTheGivenValue) {
    WithEveryInstructionSet([](const SampleKernels& kernels) {
        ExpectedRepair expected{true, 0xbf400000};
        GoThroughAllPatterns([&](const Bits& in) {
            Samples samples = AsSamples(in);
            kernels.replaceByGivenValue(samples.data(), samples.data(), blockSize, -0.75f);
            return Difference(in, expected.Next(in), samples);
        });
    });
}

TEST(ExhaustiveKernels, ReplaceByTheLastValue) {
    WithEveryInstructionSet([](const SampleKernels& kernels) {
        ExpectedRepair expected{false, 0};
        float last = 0.0f;
        GoThroughAllPatterns([&](const Bits& in) {
            const Samples source = AsSamples(in);
            Samples target;
            last = kernels.replaceByLastValue(target.data(), source.data(), blockSize, last);
            return Difference(in, expected.Next(in), target);
        });
    });
}

/// The samples between two bad ones are passed as they are, and each bad one is stopped at.
TEST(ExhaustiveKernels, PassFiniteSamplesOnly) {
    WithEveryInstructionSet([](const SampleKernels& kernels) {
        GoThroughAllPatterns([&](const Bits& in) -> std::string {
            const Samples source = AsSamples(in);
            Samples target;
            Bits expected = in;
            for (std::size_t i = 0; i < blockSize; ++i) {
                i += kernels.passFinite(target.data() + i, source.data() + i, blockSize - i);
                if (i == blockSize) break;
                if (!IsBad(in[i])) return "stopped at a finite sample";
                target[i] = 0.0f;
                expected[i] = 0;
            }
            return Difference(in, expected, target);
        });
    });
}

// ---- the engine

/// One channel that is ready to perform. Every other block finds it armed, so that both its ways of going through a
/// block are taken: with reports to make, and without.
class ReadyEngine {
public:
    explicit ReadyEngine(bool usesGivenValue) {
        const short connections[]{1, 1};
        engine.SetMode(usesGivenValue ? "givenvalue" : "lastvalue");
        engine.SetReplacementValue(-0.75f);
        engine.Configure(48000.0f, blockSize, true);
        engine.SetInletsAndOutletsStatus(connections);
    }

    void Perform(float* out, const float* in) {
        const ScopedFloatingPointControl restoreAtEnd;
        Rearm();
        engine.performInternal(&out, &in, blockSize, 0, 0, 0);
    }
    void Perform(double* out, const double* in) {
        const ScopedFloatingPointControl restoreAtEnd;
        Rearm();
        engine.Perform(&out, &in, blockSize, 0, 0, 0);
    }

private:
    void Rearm() {
        if (++numBlocks % 2 == 0) engine.Reset();
    }

    MultiFixNaN engine{1};
    unsigned long numBlocks = 0;
};

void InBothModes(const auto& check) {
    for (const bool usesGivenValue : {false, true}) {
        SCOPED_TRACE(usesGivenValue ? "givenvalue" : "lastvalue");
        ReadyEngine engine(usesGivenValue);
        check(engine, ExpectedRepair{usesGivenValue, usesGivenValue ? 0xbf400000 : 0});
    }
}

TEST(ExhaustiveEngine, Repairs32BitSamples) {
    InBothModes([](ReadyEngine& engine, ExpectedRepair expected) {
        GoThroughAllPatterns([&](const Bits& in) {
            const Samples source = AsSamples(in);
            Samples target;
            engine.Perform(target.data(), source.data());
            return Difference(in, expected.Next(in), target);
        });
    });
}

/// The host's samples have 64 bits. They are widened with denormals off, so 32-bit subnormals end as zeros of their
/// sign.
TEST(ExhaustiveEngine, RepairsTheHostsSamples) {
    InBothModes([](ReadyEngine& engine, ExpectedRepair expected) {
        GoThroughAllPatterns([&](const Bits& in) {
            std::array<double, blockSize> source, target;
            for (std::size_t i = 0; i < blockSize; ++i) source[i] = std::bit_cast<float>(in[i]);
            engine.Perform(target.data(), source.data());
            Bits out = expected.Next(in);
            for (std::uint32_t& bits : out) {
                if (IsSubnormal(bits)) bits &= 0x80000000;
            }
            return Difference(in, out, target);
        });
    });
}

}  // namespace
}  // namespace velmodsp
