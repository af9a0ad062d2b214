#include "dsp/VelmoDspSignalProcessing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <sstream>

#include "platform/VelmoDspFloatingPointControl.h"
#include "support/Block.h"
#include "utils/VelmoDspException.h"

namespace velmodsp {
namespace {

/// Writes every input times `gain`, of the last one where there are more outputs, and counts what it is asked for.
struct Gain : SignalProcessing {
    Gain(unsigned int ins, unsigned int outs, float factor = 2.0f) : SignalProcessing(ins, outs), gain(factor) {}
    void Process(float** outs, const float** ins, unsigned long n) override {
        framesProcessed += n;
        for (unsigned int k = 0; k < GetNumOutputs(); ++k) {
            for (unsigned long i = 0; i < n; ++i) outs[k][i] = gain * ins[std::min(k, GetNumInputs() - 1)][i];
        }
    }
    void Clear() override { ++clears; }

    float gain;
    unsigned long framesProcessed = 0;
    int clears = 0;
};

void Connect(SignalProcessing& processor, std::vector<short> count) {
    processor.SetInletsAndOutletsStatus(count.data());
}

/// Tells whether it is asked to write over its inputs.
struct InPlaceGain : Gain {
    InPlaceGain(unsigned int channels, bool allowInPlace) : Gain(channels, channels) {
        if (allowInPlace) AllowInPlace();
        Connect(*this, std::vector<short>(2 * channels, 1));
    }
    void Process(float** outs, const float** ins, unsigned long n) override {
        inPlace = std::equal(outs, outs + GetNumOutputs(), ins);
        Gain::Process(outs, ins, n);
    }
    bool inPlace = false;
};

template <class Thrown>
struct Thrower : SignalProcessing {
    explicit Thrower(Thrown exception) : SignalProcessing(0, 0), thrown(exception) {}
    void Process(float**, const float**, unsigned long) override { throw thrown; }
    void Clear() override { throw thrown; }
    Thrown thrown;
};

TEST(SignalProcessing, ConfiguresOnlyWhenSomethingChangedOrItMust) {
    struct Row {
        float samplerate;
        unsigned int blockSize;
        bool force;
        int clears;
    };
    const ScopedFloatingPointControl restoreAtEnd;
    const auto flush = FloatingPointControl::FlushDenormalsBits;
    Gain processor(1, 1);
    for (const Row& row : {Row{44100, 512, false, 0}, Row{44100, 512, true, 1}, Row{48000, 512, false, 2},
                           Row{48000, 64, false, 3}, Row{48000, 64, false, 3}, Row{0, 0, true, 4}}) {
        FloatingPointControl::Set(FloatingPointControl::Get() & ~flush);
        processor.Configure(row.samplerate, row.blockSize, row.force);
        EXPECT_EQ(processor.GetSamplerate(), row.samplerate > 0 ? row.samplerate : 44100);
        EXPECT_EQ(processor.GetMaxBlockSize(), row.blockSize > 0 ? row.blockSize : 512);
        EXPECT_EQ(processor.clears, row.clears);
        EXPECT_EQ(FloatingPointControl::Get() & flush, flush);
    }
}

TEST(SignalProcessing, ChoosesBetweenProcessingMuteBypassAndNothing) {
    using Channels = std::vector<std::vector<double>>;
    const Channels processed{{0.5, 1}, {1.5, 1.5}, {1.5, 1.5}}, muted{{0, 0}, {9, 9}, {0, 0}},
        bypassed{{0.25, 0.5}, {9, 9}, {0, 0}}, untouched{{9, 9}, {9, 9}, {9, 9}};
    const struct {
        long mute, bypass, disabled;
        Channels result;
    } rows[] = {{0, 0, 0, processed}, {1, 0, 0, muted},     {0, 0, 1, muted},     {1, 1, 0, muted},
                {2, 3, 1, muted},     {0, 1, 0, bypassed},  {2, 1, 0, bypassed},  {0, 1, -1, bypassed},
                {2, 0, 0, untouched}, {0, 3, 0, untouched}, {0, 0, -1, untouched}};
    // Two inputs, of which the second is unconnected, and three outputs, of which the second is unconnected.
    Gain processor(2, 3);
    Connect(processor, {1, 0, 1, 0, 1});
    processor.Configure(48000, 2, true);
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.mute << row.bypass << row.disabled);
        Block<float> in({{0.25f, 0.5f}, {0.75f, 0.75f}}), out(3, 2, 9.0f);
        processor.performInternal(out.Outs(), in.Ins(), 2, row.mute, row.bypass, row.disabled);
        Block<double> hostIn({{0.25, 0.5}, {0.75, 0.75}}), hostOut(3, 2, 9.0);
        processor.Perform(hostOut.Outs(), hostIn.Ins(), 2, row.mute, row.bypass, row.disabled);
        EXPECT_EQ(hostOut.channels, row.result);
        for (std::size_t k = 0; k < 3; ++k) EXPECT_TRUE(std::equal(out[k].begin(), out[k].end(), hostOut[k].begin()));
    }
    EXPECT_EQ(processor.framesProcessed, 4u);
    Block<double> in({{1, 2}, {3, 4}}), out(3, 2, 9.0);
    processor.Bypass(out.Outs(), in.Ins(), 2);
    EXPECT_EQ(out.channels, (Channels{{1, 2}, {9, 9}, {0, 0}})) << "the host's own samples";

    Connect(processor, {1, 1, 0, 0, 0});
    processor.Perform(out.Outs(), in.Ins(), 2, 0, 0, 0);
    EXPECT_EQ(out.channels, (Channels{{1, 2}, {9, 9}, {0, 0}})) << "nothing to write to";
    EXPECT_EQ(processor.framesProcessed, 4u);
    Connect(processor, {0, 1, 1, 1, 0});
    processor.Perform(out.Outs(), in.Ins(), 2, 0, 1, 0);
    EXPECT_EQ(out.channels, (Channels{{0, 0}, {3, 4}, {0, 0}})) << "no signal to pass at the first input";
}

TEST(SignalProcessing, TakesBlocksOfAnyLengthAndANewNumberOfInputs) {
    Gain processor(1, 1);
    processor.Configure(48000, 4, true);
    const auto perform = [&](std::size_t n) {
        Block<double> in(processor.GetNumInputs(), n, 1.5), out(1, n);
        processor.Perform(out.Outs(), in.Ins(), n, 0, 0, 0);
        return out[0] == std::vector<double>(n, 3.0);
    };
    Connect(processor, {1, 1});
    for (std::size_t n : {4u, 1u, 0u, 100u, 3u}) EXPECT_TRUE(perform(n)) << n;
    processor.SetNumInputs(5);
    EXPECT_TRUE(perform(100));
    EXPECT_STREQ(processor.GetInputDescription(4).C_Str(), "input #5");
    for (int none : {5, -1}) EXPECT_STREQ(processor.GetInputDescription(none).C_Str(), "");
}

TEST(SignalProcessing, WritesOverInputsOnlyWhereThatIsAllowedAndEveryOutputHasItsInput) {
    Block<double> in({{1, 2, 3, 4}, {5, 6, 7, 8}}), out(2, 4, 9.0);
    const Block<double> doubled({{2, 4, 6, 8}, {10, 12, 14, 16}});
    for (const bool allowed : {false, true}) {
        InPlaceGain processor(2, allowed);
        processor.Perform(out.Outs(), in.Ins(), 4, 0, 1, 0);
        EXPECT_EQ(out.channels, in.channels) << "bypassed";
        processor.Perform(out.Outs(), in.Ins(), 4, 0, 0, 0);
        EXPECT_EQ(out.channels, doubled.channels);
        EXPECT_EQ(processor.inPlace, allowed);
        processor.SetNumInputs(1);
        processor.Perform(out.Outs(), in.Ins(), 4, 0, 0, 0);
        EXPECT_EQ(out.channels, (Block<double>({doubled.channels[0], doubled.channels[0]}).channels));
        EXPECT_FALSE(processor.inPlace);
    }
}

TEST(SignalProcessing, RunsAtHalfRateWithADelayOfTenSamples) {
    Gain processor(2, 2, 1.0f);
    Connect(processor, {1, 1, 1, 1});
    processor.SetDownsampling(true);
    processor.Configure(48000, 64, true);
    EXPECT_EQ(processor.GetSamplerate(), 24000.0f);
    EXPECT_EQ(processor.GetMaxBlockSize(), 32u);
    const auto sine = [](std::size_t k, std::size_t i) {
        return std::sin(2 * std::numbers::pi * static_cast<double>((k + 1) * i) / 480.0);  // 100 and 200 Hz
    };
    for (std::size_t start = 0; start < 640; start += 64) {
        Block<double> in(2, 64), out(2, 64);
        for (std::size_t i = 0; i < 128; ++i) in[i / 64][i % 64] = sine(i / 64, start + i % 64);
        processor.Perform(out.Outs(), in.Ins(), 64, 0, 0, 0);
        // The first 30 samples hold the resamplers' start from silence.
        for (std::size_t i = start == 0 ? 30 : 0; i < 64; ++i) {
            for (std::size_t k : {0u, 1u}) ASSERT_NEAR(out[k][i], sine(k, start + i - 10), 1e-3) << k << ", " << i;
        }
    }
    EXPECT_EQ(processor.framesProcessed, 320u);
}

TEST(SignalProcessing, IsSilentAtHalfRateUntilConfiguredForTheBlockAndSafeInOddBlocks) {
    Gain processor(1, 2, 1.0f);
    Connect(processor, {1, 1, 1});
    // The last of many blocks of n ones, at the last output: silent (0), passed (1) or neither (-1).
    const auto perform = [&](std::size_t n) {
        Block<double> in(processor.GetNumInputs(), n, 1.0), out(2, n, 9.0);
        for (int block = 0; block < 20; ++block) processor.Perform(out.Outs(), in.Ins(), n, 0, 0, 0);
        if (out[1] == std::vector<double>(n, 0.0)) return 0;
        return std::all_of(out[1].begin(), out[1].end(), [](double y) { return std::abs(y - 1) < 1e-6; }) ? 1 : -1;
    };
    processor.SetDownsampling(true);
    EXPECT_EQ(perform(7), 0);
    processor.Configure(48000, 7, true);
    for (std::size_t n : {4u, 8u}) EXPECT_EQ(perform(n), 0) << n;
    EXPECT_EQ(perform(7), 1);
    processor.SetNumInputs(2);
    EXPECT_EQ(perform(7), 0);
    processor.Configure(48000, 7, true);
    EXPECT_EQ(perform(7), 1);
    processor.Configure(48000, 1, true);
    EXPECT_EQ(perform(1), 1) << "the last sample holds";
}

TEST(SignalProcessing, PrintsItsStatus) {
    Gain processor(3, 2);
    const auto status = [&] {
        std::ostringstream text;
        processor.PrintDspStatus(text);
        return text.str();
    };
    Connect(processor, {1, 0, 1, 0, 1});
    EXPECT_NE(status().find("auto-mute is disabled\n"), std::string::npos);
    processor.SetDownsampling(true);
    processor.Configure(96000, 2048, true);
    processor.SetAutoMuteThreshold(1.5f);  // 72000 samples
    Block<double> silence(3, 60000), out(2, 60000);
    processor.Perform(out.Outs(), silence.Ins(), 60000, 0, 0, 0);
    EXPECT_EQ(status().find("inactivity"), std::string::npos) << "not yet silent for the threshold";
    processor.Perform(out.Outs(), silence.Ins(), 60000, 0, 0, 0);
    EXPECT_EQ(status(),
              "samplerate           : 48 kHz\n"
              "buffersize           : 1024\n"
              "downsampling         : true\n"
              "numinputs connected  : 2 / 3\n"
              "numinputs active     : 0 / 3\n"
              "auto-mute threshold  : 1.5 sec\n"
              "inactivity period   >= 1500 msec\n"
              "numoutputs connected : 1 / 2\n");
    StringArray lines;
    lines.PushBack("old");
    processor.PrintDspStatus(lines);
    ASSERT_EQ(lines.Size(), 8u);
    EXPECT_STREQ(lines[6].C_Str(), "inactivity period   >= 1500 msec");
}

TEST(SignalProcessingDeathTest, LetsOnlyTheLibrarysExceptionsThrough) {
    const Exception own(String("on purpose"), "SignalProcessingTest", 1, false, false);
    Thrower<Exception> throwsOwn(own);
    EXPECT_THROW(throwsOwn.Configure(48000, 64, true), Exception);
    EXPECT_THROW(throwsOwn.Perform(nullptr, nullptr, 0, 0, 0, 0), Exception);
    Thrower<std::bad_alloc> throwsForeign{std::bad_alloc()};
    EXPECT_DEATH(throwsForeign.Configure(48000, 64, true), "");
    EXPECT_DEATH(throwsForeign.Perform(nullptr, nullptr, 0, 0, 0, 0), "");
}

}  // namespace
}  // namespace velmodsp
