#include "audiofiles/VelmoDspAudioFileWriter.h"

#include <algorithm>
#include <iterator>

#include "audiofiles/VelmoDspAiffFileReader.h"
#include "audiofiles/VelmoDspAiffFileWriter.h"
#include "audiofiles/VelmoDspWavFileReader.h"
#include "audiofiles/VelmoDspWavFileWriter.h"
#include "files/VelmoDspFile.h"
#include "text/VelmoDspStringArray.h"
#include "utils/VelmoDspAudioBuffer.h"
#include "utils/VelmoDspException.h"

namespace velmodsp {
namespace {

constexpr const char* AudioFileWriterSource = "libvelmodsp/src/audiofiles/VelmoDspAudioFileWriter";
constexpr unsigned long FramesPerBlock = 8192;
constexpr unsigned int MaximumNumChannels = 65535;  // both formats count channels in 16 bits

bool IsWritableSampleRate(double sampleRate) {
    constexpr double rates[] = {4410, 8820, 11025, 22050, 32000, 44100, 48000, 88200, 96000, 176400, 192000};
    return std::find(std::begin(rates), std::end(rates), sampleRate) != std::end(rates);
}

bool IsWritableDepth(int bits) { return bits == 8 || bits == 16 || bits == 24 || bits == 32; }

/// @param unknownType what to say, before the path, of an extension that no writer has
std::unique_ptr<AudioFileWriter> CreateWriterByExtension(const File& file, double sampleRate, unsigned int numChannels,
                                                         int bitsPerSample, bool overwrite, const char* unknownType) {
    const String& path = file.GetFullPathName();
    if (path.IsEmpty()) return nullptr;

    StringArray extensions;
    AiffFileReader::GetListOfPossibleExtensions(extensions);
    if (file.HasOneOfTheseExtensions(extensions))
        return AiffFileWriter::CreateWriterFor(file, sampleRate, numChannels, bitsPerSample, overwrite);
    WavFileReader::GetListOfPossibleExtensions(extensions);
    if (file.HasOneOfTheseExtensions(extensions))
        return WavFileWriter::CreateWriterFor(file, sampleRate, numChannels, bitsPerSample, overwrite);

    if (file.HasFileExtension(".mp3"))
        throw Exception("MP3 encoding is not supported. Cannot write file : " + path, AudioFileWriterSource, __LINE__,
                        true, false);
    throw Exception(unknownType + path, AudioFileWriterSource, __LINE__, true, false);
}

}  // namespace

std::unique_ptr<AudioFileWriter> AudioFileWriter::CreateWriterFor(const File& file, double sampleRate,
                                                                  unsigned int numChannels, int bitsPerSample,
                                                                  bool overwrite) {
    return CreateWriterByExtension(file, sampleRate, numChannels, bitsPerSample, overwrite,
                                   "Cannot determine file type : ");
}

std::unique_ptr<AudioFileWriter> AudioFileWriter::CreateWriterFor(const File& file, double sampleRate,
                                                                  unsigned int numChannels, bool overwrite) {
    return CreateWriterByExtension(file, sampleRate, numChannels, 32, overwrite, "Unknown audio format for file : ");
}

bool AudioFileWriter::Prepare(const File& file, double sampleRate, unsigned int numChannels, int bitsPerSample,
                              bool overwrite) {
    if (!IsWritableDepth(bitsPerSample))
        throw Exception("Invalid bits depth : " + String(bitsPerSample), AudioFileWriterSource, __LINE__, true, false);
    if (!IsWritableSampleRate(sampleRate))
        throw Exception("Invalid samplerate : " + String(sampleRate), AudioFileWriterSource, __LINE__, true, false);
    if (numChannels == 0 || numChannels > MaximumNumChannels)
        throw Exception("Invalid number of channels : " + String(numChannels), AudioFileWriterSource, __LINE__, true,
                        false);
    return file.OverwriteIfNeeded(overwrite) && file.CreateDirectoryFor();
}

AudioFileWriter::AudioFileWriter(const File& file, double sampleRateInHz, unsigned int channelCount, int bits,
                                 SampleFormat format, unsigned long long maxBytes)
    : output(file), sampleFormat(format), maximumDataSize(maxBytes) {
    sampleRate = sampleRateInHz;
    numChannels = channelCount;
    bitsPerSample = static_cast<unsigned int>(bits);
    headerPosition = static_cast<unsigned long long>(output.GetPosition());
}

bool AudioFileWriter::WriteSamples(const AudioBuffer& source, unsigned long sourceStartSample,
                                   unsigned long numSamples) {
    if (numSamples == 0) return true;
    if (numChannels > source.GetNumChannels() || sourceStartSample > source.GetNumSamples() ||
        numSamples > source.GetNumSamples() - sourceStartSample)
        return false;

    ResizeVector(channelPointers, numChannels + 1ul);
    for (unsigned int k = 0; k < numChannels; ++k)
        channelPointers[k] = reinterpret_cast<const int*>(source.GetChannel(k) + sourceStartSample);
    channelPointers[numChannels] = nullptr;
    return WriteFrames(usesFloatingPointData ? SampleForm::Words : SampleForm::Floats, channelPointers.Data(),
                       numSamples);
}

bool AudioFileWriter::Finish() {
    if (!finished && !Complete()) failed = true;
    finished = true;
    return !failed;
}

bool AudioFileWriter::writeSamples(const int** channels, unsigned long numSamples) {
    return WriteFrames(SampleForm::Words, channels, numSamples);
}

bool AudioFileWriter::WriteFrames(SampleForm form, const int* const* channels, unsigned long numFrames) {
    if (finished) return false;
    for (unsigned long done = 0; done < numFrames && !failed;) {
        const unsigned long n = std::min(numFrames - done, FramesPerBlock);
        if (n * GetBytesPerFrame() > maximumDataSize - bytesWritten || !WriteBlock(form, channels, done, n)) {
            writeHeader();
            failed = true;
        }
        done += n;
    }
    return !failed;
}

bool AudioFileWriter::WriteBlock(SampleForm form, const int* const* channels, unsigned long firstFrame,
                                 unsigned long numFrames) {
    const auto bytesPerFrame = static_cast<unsigned long>(GetBytesPerFrame());
    const unsigned long numBytes = numFrames * bytesPerFrame;
    const FrameFormat format = {sampleFormat, numChannels, bytesPerFrame};
    const void* bytes = channels[0] + firstFrame;
    if (!AreFramesTheirChannel(format, form)) {
        if (interleaved.Size() < numBytes) ResizeVector(interleaved, numBytes);
        EncodeFrames(format, interleaved.Data(), numFrames, form, channels, firstFrame);
        bytes = interleaved.Data();
    }
    if (!output.Write(bytes, numBytes)) return false;
    bytesWritten += numBytes;
    lengthInSamples += numFrames;
    return true;
}

}  // namespace velmodsp
