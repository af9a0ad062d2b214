#pragma once

#include <memory>

#include "audiofiles/VelmoDspAudioFileWriter.h"

namespace velmodsp {

/// Writes plain AIFF files: big-endian integers of 8, 16, 24 and 32 bits. The format's sizes have 32 bits: a write that
/// would pass 4 GiB fails and leaves the file complete up to there.
class AiffFileWriter : public AudioFileWriter {
public:
    /// @return null when the folder cannot be made
    /// @throws Exception as `AudioFileWriter::CreateWriterFor`
    static std::unique_ptr<AiffFileWriter> CreateWriterFor(const File& file, double sampleRate,
                                                           unsigned int numChannels, int bitsPerSample, bool overwrite);

    /// Completes the file.
    ~AiffFileWriter() override;

    String GetFormat() const override { return AiffFormat; }
    String GetDefaultFileExtensionForThisFormat() const override { return ".aiff"; }

protected:
    AiffFileWriter(const File& file, double sampleRateInHz, unsigned int channelCount, int bits);
    bool writeHeader() override;
    bool Complete() override;
};

}  // namespace velmodsp
