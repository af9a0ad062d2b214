#pragma once

#include "text/VelmoDspString.h"

namespace velmodsp {

class File;

/// What sound-file readers and writers have in common: the format of the sound, and telling file types apart.
/// The getters are real-time safe.
class AudioFilesManager {
public:
    /// Names of the file types that `TryToDetermineFileType` and the readers' `GetFormat` give.
    static constexpr const char* WavFormat = "WAV File";
    static constexpr const char* AiffFormat = "AIFF File";
    static constexpr const char* Mp3Format = "MP3 File";
    static constexpr const char* UnknownFormat = "unknown";

    /// The type of a file by its first four bytes, else by its extension (".aiff", ".aif", ".wav", ".bwf", ".mp3").
    /// Never throws; a file that cannot be opened is "unknown".
    static String TryToDetermineFileType(const File& file);

    /// In Hz; 0 means that the file is invalid.
    double GetSampleRate() const noexcept { return sampleRate; }
    unsigned int GetBitsPerSample() const noexcept { return bitsPerSample; }
    unsigned int GetNumChannels() const noexcept { return numChannels; }
    /// Whether the file holds IEEE floats rather than integers.
    bool UsesFloatingPointData() const noexcept { return usesFloatingPointData; }
    /// Frames, that is samples per channel: in the file, as its header has it, or written so far.
    unsigned long long GetLengthInSamples() const noexcept { return lengthInSamples; }

protected:
    AudioFilesManager() = default;
    ~AudioFilesManager() = default;

    double sampleRate = 0.0;
    unsigned int bitsPerSample = 0;
    unsigned int numChannels = 0;
    bool usesFloatingPointData = false;
    unsigned long long lengthInSamples = 0;
};

}  // namespace velmodsp
