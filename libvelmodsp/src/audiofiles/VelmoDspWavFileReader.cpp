#include "audiofiles/VelmoDspWavFileReader.h"

#include <algorithm>
#include <limits>

#include "audiofiles/VelmoDspChunkId.h"
#include "audiofiles/VelmoDspWavFormat.h"
#include "files/VelmoDspFile.h"
#include "text/VelmoDspStringArray.h"
#include "utils/VelmoDspException.h"

namespace velmodsp {
namespace {

constexpr const char* WavFileReaderSource = "libvelmodsp/src/audiofiles/VelmoDspWavFileReader";
constexpr unsigned long long MinimumDs64Size = 28;
constexpr unsigned long long MinimumExtensibleSize = 40;

/// Chunks of other programs, passed over even when they are empty.
bool IsWellKnownChunk(const ChunkId& id) {
    constexpr const char* ids[] = {"cue ", "LIST", "INST", "acid", "axml", "smpl", "inst", "bext"};
    return std::any_of(std::begin(ids), std::end(ids), [&](const char* known) { return id == known; });
}

SampleFormat WavSampleFormat(unsigned int bitsPerSample, bool isFloat) {
    if (isFloat && bitsPerSample != 32) return SampleFormat::None;
    return bitsPerSample == 8 ? SampleFormat::Unsigned8 : SampleFormatFor(bitsPerSample, false);
}

}  // namespace

std::unique_ptr<WavFileReader> WavFileReader::CreateReaderFor(const File& file) {
    if (TryToDetermineFileType(file) != WavFormat) return nullptr;
    return std::make_unique<WavFileReader>(file);
}

void WavFileReader::GetListOfPossibleExtensions(StringArray& extensions) {
    extensions.Clear();
    extensions.PushBack(".wav");
    extensions.PushBack(".bwf");
}

WavFileReader::WavFileReader(const File& file) : AudioFileReader(file) {
    ParseHeader();
    if (!SeemsValid())
        throw Exception("file " + file.GetFullPathName() + " is not a valid WAV file", WavFileReaderSource, __LINE__,
                        true, false);
    layout.sampleFormat = WavSampleFormat(bitsPerSample, usesFloatingPointData);
    layout.numChannels = numChannels;
    layout.numFrames = lengthInSamples;
    layout.numStoredFrames = CountStoredFrames(layout, static_cast<unsigned long long>(input.GetSize()));
    numStoredSamples = layout.numStoredFrames;
}

void WavFileReader::ParseHeader() {
    if (!ParseFileSize() || ReadChunkId(input) != "WAVE") return;
    if (isRF64 && !ParseDs64Chunk()) return;
    while (Position(input) < endOfChunks && !input.IsExhausted())
        if (!ParseChunk()) return;
}

bool WavFileReader::ParseFileSize() {
    const ChunkId id = ReadChunkId(input);
    const unsigned long long size = input.ReadUnsignedInt();
    isRF64 = id == "RF64";
    if (!isRF64) endOfChunks = 8 + size;
    return isRF64 || id == "RIFF";
}

/// The chunk of 64-bit sizes, which has to come first in RF64. Without one there is nothing to parse.
bool WavFileReader::ParseDs64Chunk() {
    if (ReadChunkId(input) != "ds64") return false;
    const unsigned long long chunkSize = input.ReadUnsignedInt();
    if (chunkSize < MinimumDs64Size) return false;
    const unsigned long long next = AddSaturated(Position(input), chunkSize + (chunkSize & 1));
    endOfChunks = AddSaturated(8, static_cast<unsigned long long>(input.ReadInt64()));
    dataLength = static_cast<unsigned long long>(input.ReadInt64());
    return GoTo(input, next);
}

/// @return whether another chunk may follow
bool WavFileReader::ParseChunk() {
    const ChunkId id = ReadChunkId(input);
    unsigned long long chunkSize = input.ReadUnsignedInt();
    const unsigned long long start = Position(input);

    if (id == "fmt ") {
        // The data that was found has been measured by the format before it; a later one cannot be meant for it.
        if (!(seenFormat && seenData)) ParseFormatChunk(chunkSize);
    } else if (id == "data") {
        if (isRF64)
            chunkSize = dataLength;
        else
            dataLength = chunkSize;
        seenData = true;
        layout.dataStart = start;
        lengthInSamples = layout.bytesPerFrame == 0 ? 0 : dataLength / layout.bytesPerFrame;
    } else if (chunkSize == 0 && !IsWellKnownChunk(id)) {
        return false;
    }
    return GoTo(input, AddSaturated(start, AddSaturated(chunkSize, chunkSize & 1)));
}

void WavFileReader::ParseFormatChunk(unsigned long long chunkSize) {
    const auto formatTag = static_cast<unsigned short>(input.ReadShort());
    numChannels = static_cast<unsigned short>(input.ReadShort());
    const unsigned int rate = input.ReadUnsignedInt();
    const unsigned long long bytesPerSecond = input.ReadUnsignedInt();
    input.SkipNextBytes(2);  // block align
    const unsigned int bits = static_cast<unsigned short>(input.ReadShort());

    seenFormat = true;
    sampleRate = rate;
    bitsPerSample = bits;
    layout.bytesPerFrame = 0;
    if (rate == 0 || numChannels == 0) return;  // not valid, whatever else it says
    if (bits < 65) {
        layout.bytesPerFrame = bits * numChannels / 8;
    } else {
        layout.bytesPerFrame = bytesPerSecond / rate;
        bitsPerSample = static_cast<unsigned int>(std::min<unsigned long long>(
            layout.bytesPerFrame * 8 / numChannels, std::numeric_limits<unsigned int>::max()));
    }
    if (!ParseSampleType(formatTag, chunkSize)) layout.bytesPerFrame = 0;
}

/// @return whether the samples are of a kind that can be read
bool WavFileReader::ParseSampleType(unsigned int formatTag, unsigned long long chunkSize) {
    usesFloatingPointData = formatTag == WavFormatTag::IeeeFloat;
    if (formatTag == WavFormatTag::Pcm || formatTag == WavFormatTag::IeeeFloat) return true;
    if (formatTag != WavFormatTag::Extensible || chunkSize < MinimumExtensibleSize) return false;

    input.SkipNextBytes(8);  // size of the extension, valid bits, channel mask
    WavSubFormat subFormat = {};
    input.Read(subFormat.data(), subFormat.size());
    usesFloatingPointData = subFormat == WavFloatSubFormat;
    return usesFloatingPointData || subFormat == WavPcmSubFormat || subFormat == WavAmbisonicPcmSubFormat;
}

bool WavFileReader::readSamples(int** destChannels, unsigned long long numSamples, unsigned long long startSample) {
    frames.Read(input, layout, SampleForm::Words, destChannels, numSamples, startSample);
    numStoredSamples = layout.numStoredFrames;
    return true;
}

bool WavFileReader::ReadFloats(unsigned long long numSamples, unsigned long long startSample) {
    const SampleForm form = usesFloatingPointData ? SampleForm::Words : SampleForm::Floats;
    frames.Read(input, layout, form, channelPointers.Data(), numSamples, startSample);
    numStoredSamples = layout.numStoredFrames;
    return true;
}

}  // namespace velmodsp
