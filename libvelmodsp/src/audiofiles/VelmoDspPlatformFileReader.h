#pragma once

#include <memory>

#include "audiofiles/VelmoDspAudioFileReader.h"
#include "audiofiles/VelmoDspFrameHistory.h"
#include "platform/VelmoDspSystemSoundFile.h"

namespace velmodsp {

/// Reads what the system's decoders know: FLAC, Ogg Vorbis, Opus, CAF and more. docs/sound-files.md has the list.
///
/// A frame is the same however it is reached. Where a seek of the decoder would only come close, as in lossy formats,
/// going back further than the last 65536 frames decodes the file from its start again, and going forward decodes what
/// lies between. A file that tells no length is decoded once when it is opened, to count its frames.
///
/// Where the decoder gives up, because the file is truncated or damaged, silence follows.
class PlatformFileReader : public AudioFileReader {
public:
    /// @return null when the system cannot read the file
    static std::unique_ptr<PlatformFileReader> CreateReaderFor(const File& file);

    /// "FLAC File", "Ogg Vorbis File", "Ogg Opus File", "CAF File", "MP3 File", "MPEG-4 File", or "Audio File" for
    /// the rest.
    String GetFormat() const override;
    /// ".flac", ".ogg", ".opus", ".caf", ".mp3", ".m4a"; for the rest, what the file itself has.
    String GetDefaultFileExtensionForThisFormat() const override;

    bool readSamples(int** destChannels, unsigned long long numSamples, unsigned long long startSample) override;

protected:
    /// @param opened what the system made of the file; not null
    PlatformFileReader(const File& file, std::unique_ptr<SystemSoundFile> opened);

private:
    unsigned long long CountFrames();
    bool Reach(unsigned long long frame);
    void GoNear(unsigned long long frame);
    bool DecodeSome();

    const String extension;  // of the file
    const std::unique_ptr<SystemSoundFile> sound;
    FrameHistory history;
};

}  // namespace velmodsp
