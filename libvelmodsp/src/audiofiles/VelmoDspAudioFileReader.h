#pragma once

#include <memory>

#include "audiofiles/VelmoDspAudioFilesManager.h"
#include "audiofiles/VelmoDspFrameLayout.h"
#include "files/VelmoDspFileReader.h"
#include "math/VelmoDspVector.h"

namespace velmodsp {

class AudioBuffer;

/// Reads a sound file as 32-bit floats, any span of frames in any order, in whatever blocks the caller likes. Memory
/// does not grow with the file.
///
///     std::unique_ptr<AudioFileReader> reader = AudioFileReader::CreateReaderFor(File("~/take.wav"));
///     AudioBuffer block(reader->GetNumChannels(), 4096, true);
///     for (unsigned long long start = 0; start < reader->GetLengthInSamples(); start += 4096)
///         reader->ReadSamples(block, 0, 4096, start);   // silence after the last frame
///
/// Integers are scaled to -1 to 1; floats keep every bit, NaN and infinity included. A file whose samples have a depth
/// without a conversion (integers of 8, 16, 24 and 32 bits and floats of 32 bits have one) reads as silence, and so
/// does what a truncated file lacks.
///
/// | Files | Read by |
/// |---|---|
/// | WAV: RIFF and RF64, uncompressed | `WavFileReader`, everywhere |
/// | AIFF, and AIFF-C uncompressed | `AiffFileReader`, everywhere |
/// | MP3 | `Mp3FileReader`, where the system has a decoder |
/// | FLAC, Ogg Vorbis, Opus, CAF and more | `PlatformFileReader`, where the system has a decoder |
///
/// docs/sound-files.md tells which systems have which decoders, and how exact they are.
///
/// Threads: one thread at a time, never the audio thread: all but the getters do file I/O or allocate.
class AudioFileReader : public AudioFilesManager {
public:
    /// Opens a sound file with the reader for its type.
    /// @return null when the path is empty
    /// @throws Exception when the file does not exist or is no sound file that can be read
    static std::unique_ptr<AudioFileReader> CreateReaderFor(const File& file);

    AudioFileReader(const AudioFileReader&) = delete;
    AudioFileReader& operator=(const AudioFileReader&) = delete;

    /// "WAV File", "AIFF File", "MP3 File" or what `PlatformFileReader` names.
    virtual String GetFormat() const = 0;
    /// ".wav", ".aiff", ".mp3" or what `PlatformFileReader` names.
    virtual String GetDefaultFileExtensionForThisFormat() const = 0;
    /// Whether this is the 64-bit form of WAV.
    virtual bool IsRF64() const { return false; }

    virtual ~AudioFileReader() = default;

    /// Reads frames as 32-bit words: integers left-justified (full scale is 2^31), floats as their bits. Everything
    /// beyond the file's frames becomes 0.
    /// @param destChannels one pointer for each channel of the file, null to leave that channel out; then any further
    /// channels, which are filled with zeros; then a null pointer. Each points at room for `numSamples` words.
    /// @param startSample frame of the file to begin with
    virtual bool readSamples(int** destChannels, unsigned long long numSamples, unsigned long long startSample) = 0;

    /// Whether the header gave a known format, a rate, a depth and channels.
    bool SeemsValid() const;

    /// Frames of the file whose samples it really holds: less than `GetLengthInSamples` when the file is truncated or
    /// its header lies. From there on it reads as silence. In files of lossy formats that is known only once reading
    /// has come to the end, and so it is when a file becomes shorter while it is open.
    unsigned long long GetNumStoredSamples() const noexcept { return numStoredSamples; }

    /// Where and how the samples lie in the file. The sample format is `None` when they have a depth without a
    /// conversion, and in files of compressed sound.
    const FrameLayout& GetFrameLayout() const noexcept { return layout; }

    /// Reads all channels of the file into the buffer's first ones, from the buffer's sample `destStartSample` on.
    /// Buffer channels beyond the file's stay as they were.
    /// @return false, with nothing changed, when the buffer has too few channels or samples
    bool ReadSamples(AudioBuffer& dest, unsigned long long destStartSample, unsigned long long numSamples,
                     unsigned long long fileStartSample);

    /// Reads the file's channel `fileChannel` into the buffer's `destChannel`.
    /// @return false, with nothing changed, when either does not exist or the buffer has too few samples
    bool ReadSamples(AudioBuffer& dest, unsigned int destChannel, unsigned long long destStartSample,
                     unsigned long long numSamples, unsigned int fileChannel, unsigned long long fileStartSample);

protected:
    /// @throws Exception when the file does not exist or cannot be opened
    explicit AudioFileReader(const File& file);

    FileReader input;
    unsigned long long numStoredSamples = 0;
    FrameLayout layout;  // of files that hold interleaved frames
    /// Where `ReadSamples` wants the samples: the destinations of `readSamples`, one per channel of the file, and a
    /// null.
    Vector<int*> channelPointers;

private:
    /// Reads floats to where `channelPointers` point: by `readSamples` and a second pass over the words. Readers that
    /// can convert as they read do so.
    virtual bool ReadFloats(unsigned long long numSamples, unsigned long long fileStartSample);
};

}  // namespace velmodsp
