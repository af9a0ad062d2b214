#include <gtest/gtest.h>

#include "audiofiles/SourceSound.h"
#include "audiofiles/VelmoDspAudioFileReader.h"
#include "files/VelmoDspFile.h"
#include "support/MessageOf.h"
#include "support/TempFolder.h"

namespace velmodsp {
namespace {

TEST(WithoutSndfile, OtherFormatsAreRefusedAndNothingElseChanges) {
    const TempFolder folder;
    const auto open = [&](const std::string& name, const Bytes& bytes) {
        WriteBytes(folder / name, bytes);
        return AudioFileReader::CreateReaderFor(File(String(folder / name)));
    };
    const SourceSound sound = Music(44100, 16, 2, 1000);
    for (const char* name : {"a.caf", "a.mp3", "a"})
        EXPECT_EQ(MessageOf([&] { open(name, sound.Caf()); }), "file " + folder / name + " is not a valid audio file");
    EXPECT_EQ(open("a.wav", sound.Wav())->GetLengthInSamples(), 1000u);
}

}  // namespace
}  // namespace velmodsp
