#include "dsp/VelmoDspSampleKernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "dsp/VelmoDspDenormals.h"
#include "platform/VelmoDspFloatingPointControl.h"

namespace velmodsp {
namespace {

using Floats = std::vector<float>;
using Doubles = std::vector<double>;

float FloatOf(std::uint32_t bits) { return std::bit_cast<float>(bits); }
double DoubleOf(std::uint64_t bits) { return std::bit_cast<double>(bits); }

/// The bytes of samples: compared as numbers, -0 would be 0, and no NaN would be itself.
template <class Sample>
std::string BytesOf(const std::vector<Sample>& samples) {
    return {reinterpret_cast<const char*>(samples.data()), samples.size() * sizeof(Sample)};
}

const SampleKernels& PlainLoops() { return *SampleKernels::Available().front(); }

/// Finite samples, zeros, subnormals and the largest ones among them, then infinities and NaN, quiet and signalling.
constexpr std::uint32_t special[]{0x00000000, 0x80000000, 0x00000001, 0x807fffff, 0x00800000, 0x7f7fffff, 0xff7fffff,
                                  0x7f800000, 0xff800000, 0x7f800001, 0xffbfffff, 0x7fc00000, 0xffc12345, 0x7fffffff};
constexpr std::size_t numFinite = 7;

/// The bits of a number, of what a conversion must make of it, and of that on a thread that flushes denormals.
template <class In, class Out>
struct Conversion {
    In in;
    Out out, flushed;
};

constexpr Conversion<std::uint64_t, std::uint32_t> narrowings[]{
    {0x3ff0000000000000, 0x3f800000, 0x3f800000},  // 1
    {0x8000000000000000, 0x80000000, 0x80000000},  // -0
    {0x3ff0000010000000, 0x3f800000, 0x3f800000},  // half way between two floats, the even one below
    {0xbff0000030000000, 0xbf800002, 0xbf800002},  // half way, the even one above
    {0x47efffffe0000000, 0x7f7fffff, 0x7f7fffff},  // the largest float
    {0x47efffffefffffff, 0x7f7fffff, 0x7f7fffff},  // the largest number that rounds to it
    {0xc7effffff0000000, 0xff800000, 0xff800000},  // the next one of the other sign
    {0x7fefffffffffffff, 0x7f800000, 0x7f800000},  // the largest double
    {0x3810000000000000, 0x00800000, 0x00800000},  // the smallest normal float
    {0x380fffffc0000000, 0x007fffff, 0x00000000},  // the largest subnormal one
    {0xb6a0000000000000, 0x80000001, 0x80000000},  // the smallest subnormal one
    {0x3690000000000000, 0x00000000, 0x00000000},  // half of it
    {0x3690000000000001, 0x00000001, 0x00000000},  // a little more
    {0x0000000000000001, 0x00000000, 0x00000000},  // a subnormal double
    {0xfff0000000000000, 0xff800000, 0xff800000},  // infinite
    {0xfffc68ace0000000, 0xffe34567, 0xffe34567},  // NaN with a payload that fits
    {0x7ff0000000000001, 0x7fc00000, 0x7fc00000},  // signalling NaN, its payload cut off
    {0xfff4000040000000, 0xffe00002, 0xffe00002},  // signalling NaN, its payload kept
};

constexpr Conversion<std::uint32_t, std::uint64_t> widenings[]{
    {0x3f800000, 0x3ff0000000000000, 0x3ff0000000000000},  // 1
    {0x80000000, 0x8000000000000000, 0x8000000000000000},  // -0
    {0x7f7fffff, 0x47efffffe0000000, 0x47efffffe0000000},  // the largest float
    {0x00800000, 0x3810000000000000, 0x3810000000000000},  // the smallest normal one
    {0x807fffff, 0xb80fffffc0000000, 0x8000000000000000},  // the largest subnormal one
    {0x00000001, 0x36a0000000000000, 0x0000000000000000},  // the smallest subnormal one
    {0xff800000, 0xfff0000000000000, 0xfff0000000000000},  // infinite
    {0xffe34567, 0xfffc68ace0000000, 0xfffc68ace0000000},  // NaN
    {0x7f800001, 0x7ff8000020000000, 0x7ff8000020000000},  // signalling NaN
};

/// Runs of noise and of bad samples, which cross the borders of vectors, and special samples between them; the same for
/// the same seed.
Floats Signal(std::size_t n, unsigned int seed) {
    std::mt19937 random(seed);
    Floats signal;
    while (signal.size() < n) {
        const bool isBad = random() % 3 == 0;
        for (std::size_t i = random() % 80; i > 0; --i) {
            const std::size_t first = isBad && random() % 64 != 0 ? numFinite : 0;
            const bool isSpecial = isBad || random() % 64 == 0;
            signal.push_back(isSpecial ? FloatOf(special[first + random() % (std::size(special) - first)])
                                       : static_cast<float>(random()) / 4294967296.0f);
        }
    }
    signal.resize(n);
    return signal;
}

/// Doubles of every magnitude and bad ones.
Doubles HostSignal(std::size_t n, unsigned int seed) {
    std::mt19937_64 random(seed);
    Doubles signal(n);
    for (double& x : signal)
        x = DoubleOf(random() % 2 == 0 ? random() : narrowings[random() % std::size(narrowings)].in);
    return signal;
}

/// Calls `kernel(out, in, n)` with `in` that many samples into memory of its own, and with `out` so many into other
/// memory. Returns all of that, including what must stay as it is.
template <class Out, class In>
std::string Run(const std::vector<In>& in, std::size_t inOffset, std::size_t outOffset, const auto& kernel) {
    std::vector<In> source(inOffset);
    source.insert(source.end(), in.begin(), in.end());
    std::vector<Out> target(in.size() + 16, Out{9});
    kernel(target.data() + outOffset, source.data() + inOffset, static_cast<unsigned long>(in.size()));
    return BytesOf(target);
}

std::string RunInPlace(const Floats& in, std::size_t offset, const auto& kernel) {
    Floats samples(offset);
    samples.insert(samples.end(), in.begin(), in.end());
    kernel(samples.data() + offset, samples.data() + offset, static_cast<unsigned long>(in.size()));
    return BytesOf(samples);
}

/// What the kernels make of signals of `n` samples, into other memory and in place: outputs and return values.
std::vector<std::string> Results(const SampleKernels& kernels, std::size_t n, std::size_t inOffset,
                                 std::size_t outOffset) {
    const auto seed = static_cast<unsigned int>(n * 8 + inOffset);
    const Floats signal = Signal(n, seed);
    std::vector<std::string> results{Run<float>(HostSignal(n, seed), inOffset, outOffset, kernels.narrow),
                                     Run<double>(signal, inOffset, outOffset, kernels.widen)};
    const auto add = [&](const auto& kernel) {
        results.push_back(Run<float>(signal, inOffset, outOffset, kernel));
        results.push_back(RunInPlace(signal, inOffset, kernel));
    };
    add([&](float* out, const float* in, unsigned long length) {
        results.push_back(std::to_string(kernels.passFinite(out, in, length)));
    });
    add([&](float* out, const float* in, unsigned long length) {
        kernels.replaceByGivenValue(out, in, length, FloatOf(0xffa00001));
    });
    add([&](float* out, const float* in, unsigned long length) {
        results.push_back(BytesOf(Floats{kernels.replaceByLastValue(out, in, length, -0.25f)}));
    });
    return results;
}

/// Runs `check` as the thread is and on a thread that flushes denormals.
void WithDenormalsOnAndOff(const auto& check) {
    const ScopedFloatingPointControl restoreAtEnd;
    FloatingPointControl::Set(FloatingPointControl::Get() & ~FloatingPointControl::FlushDenormalsBits);
    check(false);
    Denormals::TurnOff();
    check(FloatingPointControl::FlushDenormalsBits != 0);
}

/// Converts as many samples as fill a vector and more.
template <class Out, class In>
std::string Converted(void (*convert)(Out*, const In*, unsigned long) noexcept, In x) {
    std::vector<Out> out(11);
    convert(out.data(), std::vector<In>(11, x).data(), 11);
    return BytesOf(out);
}

TEST(SampleKernels, ConvertByTheRulesOfTheFloatingPointFormats) {
    WithDenormalsOnAndOff([](bool flushes) {
        for (const SampleKernels* kernels : SampleKernels::Available()) {
            SCOPED_TRACE(std::string(kernels->name) + (flushes ? ", flushing" : ""));
            for (const auto& [in, out, flushed] : narrowings) {
                EXPECT_EQ(Converted(kernels->narrow, DoubleOf(in)),
                          BytesOf(Floats(11, FloatOf(flushes ? flushed : out))))
                    << std::hex << in;
            }
            for (const auto& [in, out, flushed] : widenings) {
                EXPECT_EQ(Converted(kernels->widen, FloatOf(in)),
                          BytesOf(Doubles(11, DoubleOf(flushes ? flushed : out))))
                    << std::hex << in;
            }
        }
    });
}

TEST(SampleKernels, AgreeBitForBitForEveryLengthAndAlignment) {
    WithDenormalsOnAndOff([](bool flushes) {
        for (std::size_t n = 0; n <= 257; ++n) {
            for (std::size_t inOffset = 0; inOffset < 8; ++inOffset) {
                const std::size_t outOffset = (inOffset + n) % 8;
                const auto expected = Results(PlainLoops(), n, inOffset, outOffset);
                for (const SampleKernels* kernels : SampleKernels::Available().subspan(1)) {
                    ASSERT_EQ(Results(*kernels, n, inOffset, outOffset), expected)
                        << kernels->name << ", " << n << " samples at " << inOffset << (flushes ? ", flushing" : "");
                }
            }
        }
    });
}

const float repairedWhileLoading = [] {
    float samples[]{1.5f, NAN};
    SampleKernels::Active().replaceByLastValue(samples, samples, 2, 0.0f);
    return samples[1];
}();

TEST(SampleKernels, AreReadyBeforeMainAndThenTheFastestOfTheProcessor) {
    EXPECT_EQ(repairedWhileLoading, 1.5f);
    EXPECT_EQ(&SampleKernels::Active(), SampleKernels::Available().back());
}

}  // namespace
}  // namespace velmodsp
