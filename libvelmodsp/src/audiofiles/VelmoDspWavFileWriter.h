#pragma once

#include <memory>

#include "audiofiles/VelmoDspAudioFileWriter.h"

namespace velmodsp {

/// Writes WAV files: integers of 8, 16 and 24 bits, floats at 32 bits. More than two channels take the extensible
/// format chunk. The header keeps room for 64-bit sizes: a file that reaches 4 GiB of samples is completed as RF64.
class WavFileWriter : public AudioFileWriter {
public:
    /// @return null when the folder cannot be made
    /// @throws Exception as `AudioFileWriter::CreateWriterFor`
    static std::unique_ptr<WavFileWriter> CreateWriterFor(const File& file, double sampleRate, unsigned int numChannels,
                                                          int bitsPerSample, bool overwrite);

    /// Completes the file.
    ~WavFileWriter() override;

    String GetFormat() const override { return WavFormat; }
    String GetDefaultFileExtensionForThisFormat() const override { return ".wav"; }
    bool IsRF64() const override { return isRF64; }

protected:
    WavFileWriter(const File& file, double sampleRateInHz, unsigned int channelCount, int bits);
    bool writeHeader() override;

private:
    bool isRF64 = false;  // the form last written
};

}  // namespace velmodsp
