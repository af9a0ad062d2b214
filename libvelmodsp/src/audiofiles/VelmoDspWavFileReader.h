#pragma once

#include <memory>

#include "audiofiles/VelmoDspAudioFileReader.h"
#include "audiofiles/VelmoDspFrameReader.h"

namespace velmodsp {

class StringArray;

/// Reads WAV files: RIFF and its 64-bit form RF64, PCM and 32-bit float, plain and extensible format chunks. A file of
/// another encoding opens as an empty one.
class WavFileReader : public AudioFileReader {
public:
    /// @return null when the file is not a WAV file by its first bytes or its extension
    /// @throws Exception when its header is not valid
    static std::unique_ptr<WavFileReader> CreateReaderFor(const File& file);

    /// ".wav", ".bwf"
    static void GetListOfPossibleExtensions(StringArray& extensions);

    /// @throws Exception when the file cannot be opened or its header is not valid
    explicit WavFileReader(const File& file);

    String GetFormat() const override { return WavFormat; }
    String GetDefaultFileExtensionForThisFormat() const override { return ".wav"; }
    bool IsRF64() const override { return isRF64; }

    bool readSamples(int** destChannels, unsigned long long numSamples, unsigned long long startSample) override;

private:
    bool ReadFloats(unsigned long long numSamples, unsigned long long startSample) override;
    void ParseHeader();
    bool ParseFileSize();
    bool ParseDs64Chunk();
    bool ParseChunk();
    void ParseFormatChunk(unsigned long long chunkSize);
    bool ParseSampleType(unsigned int formatTag, unsigned long long chunkSize);

    unsigned long long dataLength = 0;   // bytes
    unsigned long long endOfChunks = 0;  // file offset
    bool isRF64 = false;
    bool seenFormat = false;
    bool seenData = false;
    FrameReader frames;
};

}  // namespace velmodsp
