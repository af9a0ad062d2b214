#include "audiofiles/VelmoDspAiffFileReader.h"

#include <algorithm>

#include "audiofiles/VelmoDspAiffSampleRate.h"
#include "audiofiles/VelmoDspChunkId.h"
#include "files/VelmoDspFile.h"
#include "text/VelmoDspStringArray.h"
#include "utils/VelmoDspException.h"

namespace velmodsp {
namespace {

constexpr const char* AiffFileReaderSource = "libvelmodsp/src/audiofiles/VelmoDspAiffFileReader";
constexpr unsigned long long PlainCommonChunkSize = 18;  // AIFF-C appends a compression type
constexpr unsigned int AiffCVersion = 0xA2805140;

SampleFormat AiffSampleFormat(unsigned int bitsPerSample, bool isFloat, bool littleEndian) {
    if (isFloat && bitsPerSample != 32) return SampleFormat::None;
    return SampleFormatFor(bitsPerSample, !littleEndian);
}

}  // namespace

std::unique_ptr<AiffFileReader> AiffFileReader::CreateReaderFor(const File& file) {
    if (TryToDetermineFileType(file) != AiffFormat) return nullptr;
    return std::make_unique<AiffFileReader>(file);
}

void AiffFileReader::GetListOfPossibleExtensions(StringArray& extensions) {
    extensions.Clear();
    extensions.PushBack(".aiff");
    extensions.PushBack(".aif");
}

AiffFileReader::AiffFileReader(const File& file) : AudioFileReader(file) {
    ParseHeader();
    if (!SeemsValid())
        throw Exception("file " + file.GetFullPathName() + " is not a valid AIFF file", AiffFileReaderSource, __LINE__,
                        true, false);
    if (seenSoundData)
        lengthInSamples =
            layout.bytesPerFrame == 0 ? 0 : std::min(lengthInSamples, soundDataSize / layout.bytesPerFrame);
    layout.sampleFormat = AiffSampleFormat(bitsPerSample, usesFloatingPointData, littleEndian);
    layout.numChannels = numChannels;
    layout.numFrames = lengthInSamples;
    layout.numStoredFrames = CountStoredFrames(layout, static_cast<unsigned long long>(input.GetSize()));
    numStoredSamples = layout.numStoredFrames;
}

void AiffFileReader::ParseHeader() {
    if (ReadChunkId(input) != "FORM") return;
    const unsigned long long size = input.ReadUnsignedIntBigEndian();
    endOfChunks = Position(input) + size;
    const ChunkId formType = ReadChunkId(input);
    if (formType != "AIFF" && formType != "AIFC") return;
    while (Position(input) < endOfChunks && !input.IsExhausted())
        if (!ParseChunk()) return;
}

/// @return whether another chunk may follow
bool AiffFileReader::ParseChunk() {
    const ChunkId id = ReadChunkId(input);
    const unsigned long long chunkSize = input.ReadUnsignedIntBigEndian();
    const unsigned long long next = Position(input) + chunkSize;

    if (id == "COMM") {
        if (!ParseCommonChunk(chunkSize)) return false;
    } else if (id == "SSND") {
        ParseSoundDataChunk(chunkSize);
    } else if (id == "FVER") {
        const unsigned int version = input.ReadUnsignedIntBigEndian();
        if (version != AiffCVersion && version != 0) return false;
        seenVersion = true;
    } else if ((seenCommon && seenSoundData && seenVersion) || input.IsExhausted()) {
        return false;
    }
    return GoTo(input, next);
}

/// @return false when the samples are of a kind that cannot be read; the file is then not valid
bool AiffFileReader::ParseCommonChunk(unsigned long long chunkSize) {
    seenCommon = true;
    numChannels = static_cast<unsigned short>(input.ReadShortBigEndian());
    lengthInSamples = input.ReadUnsignedIntBigEndian();
    const int bits = input.ReadShortBigEndian();
    bitsPerSample = bits > 0 ? static_cast<unsigned int>(bits) : 0;
    layout.bytesPerFrame = static_cast<unsigned long long>(bitsPerSample) * numChannels / 8;

    AiffSampleRate rate = {};
    input.Read(rate.data(), rate.size());
    sampleRate = DecodeAiffSampleRate(rate);

    littleEndian = false;
    usesFloatingPointData = false;
    return chunkSize <= PlainCommonChunkSize || ParseCompressionType();
}

bool AiffFileReader::ParseCompressionType() {
    const ChunkId type = ReadChunkId(input);
    usesFloatingPointData = type == "FL32" || type == "fl32";
    littleEndian = type == "sowt";
    if (usesFloatingPointData || littleEndian || type == "NONE" || type == "twos") return true;
    sampleRate = 0.0;
    return false;
}

void AiffFileReader::ParseSoundDataChunk(unsigned long long chunkSize) {
    seenSoundData = true;
    soundDataSize = chunkSize;
    const unsigned long long offset = input.ReadUnsignedIntBigEndian();
    layout.dataStart = Position(input) + 4 + offset;  // 4: the block size
}

bool AiffFileReader::readSamples(int** destChannels, unsigned long long numSamples, unsigned long long startSample) {
    frames.Read(input, layout, SampleForm::Words, destChannels, numSamples, startSample);
    numStoredSamples = layout.numStoredFrames;
    return true;
}

bool AiffFileReader::ReadFloats(unsigned long long numSamples, unsigned long long startSample) {
    const SampleForm form = usesFloatingPointData ? SampleForm::Words : SampleForm::Floats;
    frames.Read(input, layout, form, channelPointers.Data(), numSamples, startSample);
    numStoredSamples = layout.numStoredFrames;
    return true;
}

}  // namespace velmodsp
