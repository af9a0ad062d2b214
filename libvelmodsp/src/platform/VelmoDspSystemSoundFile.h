#pragma once

#include <cstddef>
#include <memory>
#include <optional>

namespace velmodsp {

class File;

/// Kinds of sound files that are told apart by name; the rest is `Other`.
enum class SoundFileKind { Mp3, Flac, Vorbis, Opus, Caf, Mpeg4, Other };

/// What a sound file holds, as the system's decoder tells.
struct SystemSoundFormat {
    SoundFileKind kind = SoundFileKind::Other;
    double sampleRate = 0.0;  // in Hz
    unsigned int numChannels = 0;
    unsigned int bitsPerSample = 0;  // of the file's integers or floats; 32 where lossy decoding gives floats
    bool usesFloatingPointData = false;
    std::optional<unsigned long long> numFrames;  // none when only decoding the whole file can tell
    bool seeksExactly = false;                    // whether `SeekTo` can be used
};

/// A sound file that the system, or a library which belongs to it, decodes from its first frame on: one source per
/// service. One thread at a time; everything may block and allocate.
class SystemSoundFile {
public:
    /// @return null when the file cannot be opened, or there is no service that knows it
    static std::unique_ptr<SystemSoundFile> Open(const File& file);
    /// Opens MPEG audio alone, and that also where it begins in the middle of a frame, as cut and recorded streams do.
    static std::unique_ptr<SystemSoundFile> OpenMp3(const File& file);

    virtual ~SystemSoundFile() = default;
    SystemSoundFile(const SystemSoundFile&) = delete;
    SystemSoundFile& operator=(const SystemSoundFile&) = delete;

    const SystemSoundFormat& GetFormat() const noexcept { return format; }

    /// Decodes the next frames as 32-bit words, the channels of a frame side by side: integers left-justified, floats
    /// as their bits. Channels of speakers come in the order of WAV files.
    /// @param words room for `numFrames` frames
    /// @return frames decoded, perhaps fewer than asked for; 0 at the end, or where the file is damaged beyond repair
    virtual std::size_t Read(int* words, std::size_t numFrames) = 0;

    /// Starts anew, so that the same samples follow as after opening. @return false when that fails; nothing follows
    virtual bool Rewind() = 0;

    /// Goes to a frame, from which on the same samples follow as when everything before it is read.
    /// @param frame below the number of frames
    /// @return false when that fails; go on with `Rewind` then
    virtual bool SeekTo(unsigned long long frame) = 0;

protected:
    SystemSoundFile() = default;

    SystemSoundFormat format;
};

}  // namespace velmodsp
