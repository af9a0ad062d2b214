#include "audiofiles/SourceSound.h"
#include "host/Program.h"
#include "host/SoundFiles.h"

namespace velmohost {
namespace {

using velmotest::Channels;
using OtherFormats = velmotest::Program;

TEST_F(OtherFormats, FeedTheInletsAsWavFilesDo) {
#ifndef VELMO_READS_COMPRESSED
    GTEST_SKIP() << "built without libsndfile";
#endif
    const velmodsp::SourceSound sound = velmodsp::Music(44100, 24, 2, 5000);
    velmodsp::WriteBytes(folder / "in.caf", sound.Caf());
    velmodsp::WriteBytes(folder / "in.wav", sound.Wav());
    for (const std::string name : {"in.caf", "in.wav"}) {
        const auto outcome =
            Velmohost("run 'tesk.fixnan~ @numchannels 2' --in " + name + " --out out-" + name + ".wav");
        ASSERT_EQ(outcome.status, 0) << outcome.err;
    }
    const Channels out = velmotest::ReadSound(folder / "out-in.caf.wav");
    EXPECT_EQ(out[1].size(), 5000u);
    EXPECT_EQ(out, velmotest::ReadSound(folder / "out-in.wav.wav"));
}

}  // namespace
}  // namespace velmohost
