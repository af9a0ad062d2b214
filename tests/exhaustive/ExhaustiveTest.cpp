#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

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

/// Runs over the blocks of one part of all patterns; says what is wrong with a block, or nothing.
using BlockCheck = std::function<std::string(const Bits& in)>;

/// Goes through all patterns on every core, with a check of its own for each, and fails with the first error.
void GoThroughAllPatterns(const std::function<BlockCheck()>& makeCheck) {
    constexpr std::uint64_t numBlocks = numPatterns / blockSize;
    const std::uint64_t numParts = std::max(1u, std::thread::hardware_concurrency());
    std::vector<std::string> errors(numParts);
    std::atomic<std::uint64_t> numBad{0};
    std::vector<std::thread> threads;
    for (std::uint64_t part = 0; part < numParts; ++part) {
        threads.emplace_back([&, part] {
            const BlockCheck check = makeCheck();
            std::uint64_t numBadOfPart = 0;
            for (std::uint64_t block = numBlocks * part / numParts; block < numBlocks * (part + 1) / numParts;
                 ++block) {
                const Bits in = PatternsOfBlock(block);
                numBadOfPart += NumBad(in);
                errors[part] = check(in);
                if (!errors[part].empty()) return;
            }
            numBad += numBadOfPart;
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (const std::string& error : errors) ASSERT_EQ(error, "");
    ASSERT_EQ(numBad, numBadPatterns);
}

Samples AsSamples(const Bits& bits) { return std::bit_cast<Samples>(bits); }

// ---- each instruction set

class ExhaustiveKernels : public testing::TestWithParam<const SampleKernels*> {};

TEST_P(ExhaustiveKernels, ReplaceByTheGivenValue) {
    GoThroughAllPatterns([&kernels = *GetParam()]() -> BlockCheck {
        return [&kernels, expected = ExpectedRepair{true, 0xbf400000}](const Bits& in) mutable {
            Samples samples = AsSamples(in);
            kernels.replaceByGivenValue(samples.data(), samples.data(), blockSize, -0.75f);
            return Difference(in, expected.Next(in), samples);
        };
    });
}

TEST_P(ExhaustiveKernels, ReplaceByTheLastValue) {
    GoThroughAllPatterns([&kernels = *GetParam()]() -> BlockCheck {
        return [&kernels, last = 0.0f, expected = ExpectedRepair{false, 0}](const Bits& in) mutable {
            const Samples source = AsSamples(in);
            Samples target;
            last = kernels.replaceByLastValue(target.data(), source.data(), blockSize, last);
            return Difference(in, expected.Next(in), target);
        };
    });
}

/// The samples between two bad ones are passed as they are, and each bad one is stopped at.
TEST_P(ExhaustiveKernels, PassFiniteSamplesOnly) {
    GoThroughAllPatterns([&kernels = *GetParam()]() -> BlockCheck {
        return [&kernels](const Bits& in) -> std::string {
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
        };
    });
}

INSTANTIATE_TEST_SUITE_P(InstructionSets, ExhaustiveKernels, testing::ValuesIn(SampleKernels::Available()),
                         [](const auto& kernels) { return std::string(kernels.param->name); });

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

class ExhaustiveEngine : public testing::TestWithParam<const char*> {
protected:
    static bool UsesGivenValue() { return std::string("givenvalue") == GetParam(); }
    static ExpectedRepair Expected() { return {UsesGivenValue(), UsesGivenValue() ? 0xbf400000 : 0}; }
};

TEST_P(ExhaustiveEngine, Repairs32BitSamples) {
    GoThroughAllPatterns([]() -> BlockCheck {
        const auto engine = std::make_shared<ReadyEngine>(UsesGivenValue());
        return [engine, expected = Expected()](const Bits& in) mutable {
            const Samples source = AsSamples(in);
            Samples target;
            engine->Perform(target.data(), source.data());
            return Difference(in, expected.Next(in), target);
        };
    });
}

/// The host's samples have 64 bits. They are widened with denormals off, so 32-bit subnormals end as zeros of their
/// sign.
TEST_P(ExhaustiveEngine, RepairsTheHostsSamples) {
    GoThroughAllPatterns([]() -> BlockCheck {
        const auto engine = std::make_shared<ReadyEngine>(UsesGivenValue());
        return [engine, expected = Expected()](const Bits& in) mutable {
            std::array<double, blockSize> source, target;
            for (std::size_t i = 0; i < blockSize; ++i) source[i] = std::bit_cast<float>(in[i]);
            engine->Perform(target.data(), source.data());
            Bits out = expected.Next(in);
            for (std::uint32_t& bits : out) {
                if (IsSubnormal(bits)) bits &= 0x80000000;
            }
            return Difference(in, out, target);
        };
    });
}

INSTANTIATE_TEST_SUITE_P(Modes, ExhaustiveEngine, testing::Values("lastvalue", "givenvalue"),
                         [](const auto& mode) { return std::string(mode.param); });

}  // namespace
}  // namespace velmodsp
