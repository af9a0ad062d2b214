#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "audiofiles/VelmoDspAudioFileReader.h"
#include "utils/VelmoDspAudioBuffer.h"

namespace velmohost {

/// A sound file read block by block: its memory is one block, however long the file.
///
///     SoundSource source("in.wav");
///     while (const unsigned long n = source.ReadBlock(4096)) use(source.Channel(0), n);
///
/// Main thread.
class SoundSource {
public:
    /// Opens the file at `path`.
    /// @throws SoundError when it is missing, unreadable or not a sound file
    explicit SoundSource(const std::string& path);

    unsigned NumChannels() const { return reader->GetNumChannels(); }
    double Samplerate() const { return reader->GetSampleRate(); }

    unsigned BitsPerSample() const { return reader->GetBitsPerSample(); }
    bool HoldsFloats() const { return reader->UsesFloatingPointData(); }

    /// Where and how the samples lie in the file; no sample format for compressed sound.
    const velmodsp::FrameLayout& Layout() const { return reader->GetFrameLayout(); }

    /// @throws SoundError when the samples cannot be understood, so that the whole file would read as silence
    void RequireKnownEncoding() const;

    /// The length that the header gives; where the header only says that it is not known, what the file holds.
    std::uint64_t LengthInFrames() const { return lengthInFrames; }

    /// Frames of that length that a file which was cut short does not hold; they read as silence. It may turn out to be
    /// more of them while the file is read.
    std::uint64_t NumMissingFrames() const;

    /// Whether all that the file holds has been read: what is left of the length, if anything, is silence.
    bool HasOnlySilenceLeft() const { return position >= lengthInFrames - NumMissingFrames(); }

    /// Whether more frames turned out to be missing than were when the file was opened.
    bool HasLostFrames() const { return NumMissingFrames() > numMissingAtFirst; }

    /// Reads the next frames, `maxFrames` at most, and returns how many: 0 at the end. The block's memory grows to the
    /// largest that was asked for.
    /// @throws SoundError when the file cannot be read or there is no memory
    unsigned long ReadBlock(unsigned long maxFrames);

    /// The last block's samples of a channel, valid until the next block is read.
    const float* Channel(unsigned channel) const { return block.GetChannel(channel); }

private:
    const std::string path;
    std::unique_ptr<velmodsp::AudioFileReader> reader;
    const std::uint64_t lengthInFrames;
    const std::uint64_t numMissingAtFirst;
    velmodsp::AudioBuffer block;
    std::uint64_t position = 0;  // frames read so far
};

}  // namespace velmohost
