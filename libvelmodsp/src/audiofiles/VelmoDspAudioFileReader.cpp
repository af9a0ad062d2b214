#include "audiofiles/VelmoDspAudioFileReader.h"

#include "audiofiles/VelmoDspAiffFileReader.h"
#include "audiofiles/VelmoDspMp3FileReader.h"
#include "audiofiles/VelmoDspPlatformFileReader.h"
#include "audiofiles/VelmoDspSampleFormat.h"
#include "audiofiles/VelmoDspWavFileReader.h"
#include "files/VelmoDspFile.h"
#include "utils/VelmoDspAudioBuffer.h"
#include "utils/VelmoDspException.h"

namespace velmodsp {
namespace {

constexpr const char* AudioFileReaderSource = "libvelmodsp/src/audiofiles/VelmoDspAudioFileReader";

/// The reader for the file's type; null when it finds nothing that it can read.
std::unique_ptr<AudioFileReader> CreateReaderByType(const File& file) {
    const String type = AudioFilesManager::TryToDetermineFileType(file);
    if (type == AudioFilesManager::AiffFormat) return std::make_unique<AiffFileReader>(file);
    if (type == AudioFilesManager::WavFormat) return std::make_unique<WavFileReader>(file);
    if (type == AudioFilesManager::Mp3Format) return Mp3FileReader::CreateReaderFor(file);
    return PlatformFileReader::CreateReaderFor(file);
}

bool HasRoom(const AudioBuffer& buffer, unsigned long long start, unsigned long long numSamples) {
    return start <= buffer.GetNumSamples() && numSamples <= buffer.GetNumSamples() - start;
}

/// The storage of a channel's samples, which the raw reader fills with words first.
int* WordsOf(AudioBuffer& buffer, unsigned int channel, unsigned long long start) {
    return reinterpret_cast<int*>(buffer.GetChannel(channel) + start);
}

}  // namespace

std::unique_ptr<AudioFileReader> AudioFileReader::CreateReaderFor(const File& file) {
    const String& path = file.GetFullPathName();
    if (path.IsEmpty()) return nullptr;
    if (!file.ExistsAsFile())
        throw Exception("file " + path + " does not exist", AudioFileReaderSource, __LINE__, true, false);

    std::unique_ptr<AudioFileReader> reader = CreateReaderByType(file);
    if (reader == nullptr || !reader->SeemsValid())
        throw Exception("file " + path + " is not a valid audio file", AudioFileReaderSource, __LINE__, true, false);
    return reader;
}

AudioFileReader::AudioFileReader(const File& file) : input(file) {}

bool AudioFileReader::SeemsValid() const {
    return GetFormat() != UnknownFormat && sampleRate > 0.0 && bitsPerSample != 0 && numChannels != 0;
}

bool AudioFileReader::ReadSamples(AudioBuffer& dest, unsigned long long destStartSample, unsigned long long numSamples,
                                  unsigned long long fileStartSample) {
    if (numSamples == 0) return true;
    if (!HasRoom(dest, destStartSample, numSamples) || numChannels > dest.GetNumChannels()) return false;

    ResizeVector(channelPointers, numChannels + 1ul);
    for (unsigned int k = 0; k < numChannels; ++k) channelPointers[k] = WordsOf(dest, k, destStartSample);
    channelPointers[numChannels] = nullptr;
    return ReadFloats(numSamples, fileStartSample);
}

bool AudioFileReader::ReadSamples(AudioBuffer& dest, unsigned int destChannel, unsigned long long destStartSample,
                                  unsigned long long numSamples, unsigned int fileChannel,
                                  unsigned long long fileStartSample) {
    if (destChannel >= dest.GetNumChannels() || fileChannel >= numChannels) return false;
    if (!HasRoom(dest, destStartSample, numSamples)) return false;
    if (numSamples == 0) return true;

    ResizeVector(channelPointers, numChannels + 1ul);
    for (int*& pointer : channelPointers) pointer = nullptr;
    channelPointers[fileChannel] = WordsOf(dest, destChannel, destStartSample);
    return ReadFloats(numSamples, fileStartSample);
}

bool AudioFileReader::ReadFloats(unsigned long long numSamples, unsigned long long fileStartSample) {
    if (!readSamples(channelPointers.Data(), numSamples, fileStartSample)) return false;
    if (usesFloatingPointData) return true;
    for (int* words : channelPointers)
        if (words != nullptr)
            ConvertWordsToFloats(reinterpret_cast<float*>(words), static_cast<std::size_t>(numSamples));
    return true;
}

}  // namespace velmodsp
