#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <sstream>

#include "audiobuffer/FilledBuffer.h"
#include "audiofiles/VelmoDspAudioFileReader.h"
#include "files/VelmoDspFile.h"
#include "math/VelmoDspMatrix.h"
#include "support/FileBytes.h"
#include "support/FileSizeLimit.h"
#include "support/MatFile.h"
#include "support/MessageOf.h"
#include "support/Noise.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"

namespace velmodsp {
namespace {

using testing::ElementsAre;

const Samples oddities = {std::bit_cast<float>(0xFFA00001u), INFINITY, -INFINITY, -0.0f, 1e-42f, 3.0f};

/// The bits of a channel, in which NaNs compare.
std::vector<std::uint32_t> Bits(const Samples& samples) {
    std::vector<std::uint32_t> bits(samples.size());
    std::memcpy(bits.data(), samples.data(), samples.size() * sizeof(float));
    return bits;
}

TEST(AudioBufferConversions, AMatrixHasARowForEachChannel) {
    const FilledBuffer buffer({{1, 2, 3}, {4, 5, 6}});
    Matrix<float> matrix(3, 2);
    buffer.CopyTo(matrix);
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
    EXPECT_THAT(Channel(back, 1), ElementsAre(0, 0, 0));
    EXPECT_EQ(MessageOf([&] { back.CopyFrom(Matrix<float>((1ul << 32) + 1, 0)); }),
              "Too many rows for the channels of a buffer : 4294967297");

    AudioBuffer(0, 0, true).CopyTo(matrix);
    back.CopyFrom(matrix);
    EXPECT_EQ(back.GetNumChannels() + back.GetNumSamples(), 0u);
}

TEST(AudioBufferConversions, PrintsARowForEachChannelWithoutAName) {
    const FilledBuffer buffer({{0.5f, NAN}, {-1.25f, 2.0f}});
    std::ostringstream plain, matlab, latex;
    buffer.Print(plain, 1);
    EXPECT_EQ(plain.str(), "matrix 2 x 2\n0.5 nan \n-1.3 2.0 \n");
    buffer.PrintMatlabLike(matlab, 2);
    EXPECT_EQ(matlab.str(), "% matrix 2 x 2\n[ ...\n0.50 nan ; ...\n-1.25 2.00 ; ...\n...\n]; \n");
    buffer.PrintLatexLike(latex, 0);
    EXPECT_EQ(latex.str(),
              "\\begin{equation}\n\\begin{pmatrix}\n\\begin{array}{cc}\n"
              "                     0.5  & nan  \\\\ \n"
              "\\noalign{\\smallskip} -1.25  & 2  \\\\ \n"
              "\\end{array}\n\\end{pmatrix}\n\\end{equation}\n");
}

class AudioBufferFiles : public testing::Test {
protected:
    File At(const std::string& name) const { return File((folder / name).c_str()); }

    TempFolder folder, trash;
    ScopedVariable dataHome{"XDG_DATA_HOME", trash.Path().string()};
};

TEST_F(AudioBufferFiles, MatFilesHoldEveryBit) {
    const FilledBuffer buffer({oddities, {1, 2, 3, 4, 5, 6}});
    std::string frames;  // a matrix lies in the file column by column, which is frame by frame
    for (unsigned int i = 0; i < 6; ++i)
        for (unsigned int k = 0; k < 2; ++k) frames.append(reinterpret_cast<const char*>(buffer.GetChannel(k) + i), 4);
    WriteBytes(folder / "take.mat", "an older take");
    EXPECT_TRUE(buffer.SaveAsMatFile(At("take.mat"), "take_1"));
    EXPECT_THAT(ReadMatFile(folder / "take.mat"), ElementsAre(MatVariable{"take_1", "single", {2, 6}, frames}));
    EXPECT_EQ(ReadBytes(trash / "Trash/files/take.mat"), "an older take");
    EXPECT_THROW(buffer.SaveAsMatFile(At("take.mat"), "take 1"), Exception);

    const FileSizeLimit fullDisk(100);
    EXPECT_FALSE(buffer.SaveAsMatFile(At("other.mat"), "take"));
}

TEST_F(AudioBufferFiles, SoundFilesComeBackInTheirDepth) {
    const Samples noise = Noise(20000, 1);
    const FilledBuffer buffer({noise, Samples(20000, 0.5f), Noise(20000, 2)});
    AudioBuffer loaded(1, 7, true);

    EXPECT_TRUE(buffer.SaveAsAudioFile(At("a.aiff"), 44100, 16, false));
    EXPECT_TRUE(loaded.LoadFromAudioFile(At("a.aiff")));
    EXPECT_EQ(AudioFileReader::CreateReaderFor(At("a.aiff"))->GetBitsPerSample(), 16u);
    ASSERT_EQ(loaded.GetNumChannels(), 3u);
    ASSERT_EQ(loaded.GetNumSamples(), 20000u);
    EXPECT_THAT(Channel(loaded, 0), testing::Pointwise(testing::FloatNear(1.0f / 32768), noise));
    EXPECT_THAT(Channel(loaded, 1), testing::Each(0.5f));

    const FilledBuffer odd({oddities});
    EXPECT_TRUE(odd.SaveAsAudioFile(At("b.wav"), 96000, false));  // 32 bits
    EXPECT_TRUE(loaded.LoadFromAudioFile(At("b.wav")));
    EXPECT_EQ(loaded.GetNumChannels(), 1u);
    EXPECT_EQ(Bits(Channel(loaded, 0)), Bits(oddities));
    EXPECT_EQ(AudioFileReader::CreateReaderFor(At("b.wav"))->GetSampleRate(), 96000);

    EXPECT_TRUE(AudioBuffer(2, 0, true).SaveAsAudioFile(At("b.wav"), 48000, true));
    EXPECT_TRUE(loaded.LoadFromAudioFile(At("b.wav")));
    EXPECT_EQ(loaded.GetNumChannels(), 2u);
    EXPECT_EQ(loaded.GetNumSamples(), 0u);
}

TEST_F(AudioBufferFiles, OneChannelOfAFileIsLoadedAlone) {
    EXPECT_TRUE(FilledBuffer({{1, 2, 3}, {-4, -5, -6}}).SaveAsAudioFile(At("stereo.wav"), 48000, false));
    FilledBuffer buffer({{7}, {8}});
    EXPECT_EQ(MessageOf([&] { buffer.LoadFromAudioFile(At("stereo.wav"), 2); }),
              "Invalid channel index 2 for file " + folder / "stereo.wav");
    EXPECT_EQ(buffer.GetNumChannels(), 2u);
    EXPECT_THAT(Channel(buffer, 1), ElementsAre(8));

    EXPECT_TRUE(buffer.LoadFromAudioFile(At("stereo.wav"), 1));
    EXPECT_EQ(buffer.GetNumChannels(), 1u);
    EXPECT_THAT(Channel(buffer, 0), ElementsAre(-4, -5, -6));
}

TEST_F(AudioBufferFiles, RefusedFilesAreToldAndChangeNothing) {
    FilledBuffer buffer({{1, 2}});
    WriteBytes(folder / "text.wav", "no sound at all");
    for (const File& file : {At("missing.wav"), At("text.wav"), File(folder.Path().c_str()), File("")}) {
        EXPECT_FALSE(buffer.LoadFromAudioFile(file)) << file.GetFullPathName();
        EXPECT_FALSE(buffer.LoadFromAudioFile(file, 0)) << file.GetFullPathName();
    }
    EXPECT_THAT(Channel(buffer, 0), ElementsAre(1, 2));

    for (const char* name : {"sound.xyz", "sound.mp3"}) EXPECT_FALSE(buffer.SaveAsAudioFile(At(name), 48000, 16, true));
    EXPECT_FALSE(buffer.SaveAsAudioFile(At("a.wav"), 48000, 12, true));
    EXPECT_FALSE(buffer.SaveAsAudioFile(At("a.wav"), 1234.5, true));
    EXPECT_FALSE(AudioBuffer(0, 4, true).SaveAsAudioFile(At("a.wav"), 48000, true));
    EXPECT_FALSE(buffer.SaveAsAudioFile(File(""), 48000, true));
    EXPECT_FALSE(At("a.wav").ExistsAsFile());
    EXPECT_FALSE(buffer.SaveAsAudioFile(At("text.wav"), 48000, 16, false)) << "the file may not be overwritten";
    EXPECT_EQ(ReadBytes(folder / "text.wav"), "no sound at all");
}

TEST_F(AudioBufferFiles, AFullDiskIsTold) {
    const FileSizeLimit fullDisk(50);  // not even room for the header
    EXPECT_FALSE(FilledBuffer({{1, 2}}).SaveAsAudioFile(At("a.wav"), 48000, 24, false));
    EXPECT_FALSE(AudioBuffer(1, 0, true).SaveAsAudioFile(At("b.wav"), 48000, false));
}

}  // namespace
}  // namespace velmodsp
