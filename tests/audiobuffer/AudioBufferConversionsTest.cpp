#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <sstream>

#include "audiobuffer/FilledBuffer.h"
#include "audiofiles/VelmoDspAudioFileReader.h"
#include "files/VelmoDspFile.h"
#include "math/VelmoDspMatrix.h"
#include "support/FileBytes.h"
#ifndef _WIN32
#include "support/MatFile.h"
#endif
#include "support/MessageOf.h"
#include "support/Noise.h"
#include "support/OwnTrash.h"
#include "support/TempFolder.h"

namespace velmodsp {
namespace {

using testing::ElementsAre;

const Samples oddities = {std::bit_cast<float>(0xFFA00001u), INFINITY, -0.0f, 1e-42f};

/// The samples' bytes, in which NaNs compare.
std::string Bytes(const Samples& samples) {
    return {reinterpret_cast<const char*>(samples.data()), samples.size() * sizeof(float)};
}

TEST(AudioBufferConversions, MatricesHaveARowForEachChannel) {
    Matrix<float> matrix(3, 2);
    FilledBuffer({{1, 2, 3}, {4, 5, 6}}).CopyTo(matrix);
    EXPECT_EQ(matrix.GetNumRows(), 2u);
    EXPECT_THAT(Samples(matrix.Data(), matrix.Data() + 6), ElementsAre(1, 2, 3, 4, 5, 6));
    const float* elements = matrix.Data();
    FilledBuffer({{7, 8, 9}, {0, 0, 0}}).CopyTo(matrix);
    EXPECT_EQ(matrix.Data(), elements) << "a matrix of the right shape is not reallocated";
    EXPECT_EQ(matrix(0, 2), 9.0f);

    AudioBuffer back(5, 1, true);
    back.CopyFrom(matrix);
    EXPECT_EQ(back.GetNumChannels(), 2u);
    EXPECT_THAT(Channel(back, 0), ElementsAre(7, 8, 9));
#ifndef _WIN32  // where no matrix is that high
    EXPECT_THROW(back.CopyFrom(Matrix<float>((1ul << 32) + 1, 0)), Exception);
#endif
    EXPECT_THAT(Channel(back, 1), ElementsAre(0, 0, 0));
}

TEST(AudioBufferConversions, PrintsInTheMatrixFormsWithoutAName) {
    const FilledBuffer buffer({{0.5f, NAN}, {-1.25f, 2.0f}});
    std::ostringstream plain, matlab, latex;
    buffer.Print(plain, 1);
    EXPECT_EQ(plain.str(), "matrix 2 x 2\n0.5 nan \n-1.3 2.0 \n");
    buffer.PrintMatlabLike(matlab, 2);
    EXPECT_EQ(matlab.str(), "% matrix 2 x 2\n[ ...\n0.50 nan ; ...\n-1.25 2.00 ; ...\n...\n]; \n");
    buffer.PrintLatexLike(latex, 1);
    EXPECT_THAT(latex.str(), testing::HasSubstr("{cc}\n                     0.5  & nan  \\\\ \n\\noalign"));
}

class AudioBufferFiles : public testing::Test {
protected:
    File At(const std::string& name) const { return File((folder / name).c_str()); }

    TempFolder folder;
    OwnTrash trash;
};

#ifndef _WIN32  // the library that reads the files back is not there
TEST_F(AudioBufferFiles, MatFilesHoldEveryBit) {
    const FilledBuffer buffer({oddities, {1, 2, 3, 4}});
    Samples frames;  // the order of the file: column by column, which is frame by frame
    for (unsigned int i = 0; i < 4; ++i) frames.insert(frames.end(), {oddities[i], static_cast<float>(i + 1)});
    WriteBytes(folder / "take.mat", "an older take");
    EXPECT_TRUE(buffer.SaveAsMatFile(At("take.mat"), "take_1"));
    EXPECT_THAT(ReadMatFile(folder / "take.mat"),
                ElementsAre(MatVariable{"take_1", MAT_C_SINGLE, {2, 4}, Bytes(frames)}));
    EXPECT_EQ(ReadBytes(trash / "take.mat"), "an older take");
    EXPECT_THROW(buffer.SaveAsMatFile(At("take.mat"), "take 1"), Exception);
}
#endif

TEST_F(AudioBufferFiles, SoundFilesComeBackInTheirDepth) {
    const Samples noise = Noise(20000, 1);
    AudioBuffer loaded(1, 7, true);
    EXPECT_TRUE(FilledBuffer({noise, Samples(20000, 0.5f), noise}).SaveAsAudioFile(At("a.aiff"), 44100, 16, false));
    EXPECT_TRUE(loaded.LoadFromAudioFile(At("a.aiff")));
    EXPECT_EQ(AudioFileReader::CreateReaderFor(At("a.aiff"))->GetBitsPerSample(), 16u);
    ASSERT_EQ(loaded.GetNumChannels(), 3u);
    EXPECT_THAT(Channel(loaded, 1), testing::Each(0.5f));
    EXPECT_THAT(Channel(loaded, 2), testing::Pointwise(testing::FloatNear(1.0f / 32768), noise));

    EXPECT_TRUE(FilledBuffer({oddities}).SaveAsAudioFile(At("b.wav"), 96000, false));  // 32 bits
    EXPECT_TRUE(loaded.LoadFromAudioFile(At("b.wav")));
    EXPECT_EQ(loaded.GetNumChannels(), 1u);
    EXPECT_EQ(Bytes(Channel(loaded, 0)), Bytes(oddities));

    EXPECT_TRUE(AudioBuffer(2, 0, true).SaveAsAudioFile(At("b.wav"), 48000, true));
    EXPECT_TRUE(loaded.LoadFromAudioFile(At("b.wav")));
    EXPECT_EQ(loaded.GetNumSamples(), 0u);
}

TEST_F(AudioBufferFiles, OneChannelOfAFileIsLoadedAlone) {
    EXPECT_TRUE(FilledBuffer({{1, 2, 3}, {-4, -5, -6}}).SaveAsAudioFile(At("stereo.wav"), 48000, false));
    FilledBuffer buffer({{7}, {8}});
    EXPECT_EQ(MessageOf([&] { buffer.LoadFromAudioFile(At("stereo.wav"), 2); }),
              "Invalid channel index 2 for file " + folder / "stereo.wav");
    EXPECT_THAT(Channel(buffer, 1), ElementsAre(8));
    EXPECT_TRUE(buffer.LoadFromAudioFile(At("stereo.wav"), 1));
    EXPECT_EQ(buffer.GetNumChannels(), 1u);
    EXPECT_THAT(Channel(buffer, 0), ElementsAre(-4, -5, -6));
}

TEST_F(AudioBufferFiles, WhatCannotBeReadOrWrittenIsToldAndChangesNothing) {
    FilledBuffer buffer({{1, 2}});
    WriteBytes(folder / "text.wav", "no sound at all");
    for (const File& file : {At("missing.wav"), At("text.wav"), File("")}) {
        EXPECT_FALSE(buffer.LoadFromAudioFile(file));
        EXPECT_FALSE(buffer.LoadFromAudioFile(file, 0));
    }
    EXPECT_THAT(Channel(buffer, 0), ElementsAre(1, 2));

    EXPECT_FALSE(buffer.SaveAsAudioFile(At("a.xyz"), 48000, 16, true));
    EXPECT_FALSE(buffer.SaveAsAudioFile(At("a.wav"), 48000, 12, true));
    EXPECT_FALSE(buffer.SaveAsAudioFile(At("a.wav"), 1234.5, true));
    EXPECT_FALSE(buffer.SaveAsAudioFile(File(""), 48000, true));
    EXPECT_FALSE(buffer.SaveAsAudioFile(At("text.wav"), 48000, 16, false)) << "may not be overwritten";
    EXPECT_EQ(ReadBytes(folder / "text.wav"), "no sound at all");
}

}  // namespace
}  // namespace velmodsp
