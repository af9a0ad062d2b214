#pragma once

#include <memory>

#include "audiofiles/VelmoDspAudioFileReader.h"
#include "audiofiles/VelmoDspFrameReader.h"

namespace velmodsp {

class StringArray;

/// Reads AIFF files and those AIFF-C files that are not compressed: big-endian integers, little-endian ones ("sowt")
/// and 32-bit floats.
class AiffFileReader : public AudioFileReader {
public:
    /// @return null when the file is not an AIFF file by its first bytes or its extension
    /// @throws Exception when its header is not valid
    static std::unique_ptr<AiffFileReader> CreateReaderFor(const File& file);

    /// ".aiff", ".aif"
    static void GetListOfPossibleExtensions(StringArray& extensions);

    /// @throws Exception when the file cannot be opened or its header is not valid
    explicit AiffFileReader(const File& file);

    String GetFormat() const override { return AiffFormat; }
    String GetDefaultFileExtensionForThisFormat() const override { return ".aiff"; }

    bool readSamples(int** destChannels, unsigned long long numSamples, unsigned long long startSample) override;

private:
    bool ReadFloats(unsigned long long numSamples, unsigned long long startSample) override;
    void ParseHeader();
    bool ParseChunk();
    bool ParseCommonChunk(unsigned long long chunkSize);
    bool ParseCompressionType();
    void ParseSoundDataChunk(unsigned long long chunkSize);

    unsigned long long soundDataSize = 0;  // bytes of the sound data chunk, its own two fields included
    unsigned long long endOfChunks = 0;    // file offset
    bool littleEndian = false;
    bool seenCommon = false;
    bool seenSoundData = false;
    bool seenVersion = false;
    FrameReader frames;
};

}  // namespace velmodsp
