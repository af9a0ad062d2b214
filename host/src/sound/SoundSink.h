#pragma once

#include <memory>
#include <string>

#include "audiofiles/VelmoDspAudioFileWriter.h"
#include "sound/PendingFile.h"
#include "sound/SoundError.h"
#include "utils/VelmoDspAudioBuffer.h"

namespace velmohost {

/// A sound file written block by block. It takes its name only when all samples are written, and a file that had the
/// name then goes to the user's trash; see `PendingFile`. A sink that is given up, by an error too, leaves everything
/// as it was.
///
///     SoundSink sink({"out.wav", 48000.0, 2, 24}, 4096);
///     std::copy_n(left, 4096, sink.Channel(0));   // and the right channel
///     sink.WriteBlock(4096);
///     sink.Finish();
///
/// Main thread.
class SoundSink {
public:
    struct Format {
        std::string path;         ///< ends in .wav, .bwf, .aif or .aiff
        double samplerate;        ///< in Hz
        unsigned numChannels;     ///< at least 1
        int bitsPerSample;        ///< 8, 16, 24 or 32
        std::uint64_t numFrames;  ///< frames that will be written
    };

    /// Starts the file, for blocks of at most `blockFrames` frames.
    /// @throws SoundError when the format has no room for the frames, the rate or the depth, or the file cannot be made
    SoundSink(const Format& format, unsigned long blockFrames);

    /// Where the next block's samples of a channel are to be put, room for `blockFrames` frames.
    float* Channel(unsigned channel) { return block.GetChannel(channel); }

    /// Writes the first `numFrames` frames of the block.
    /// @throws SoundError when they could not all be written, for instance because the disk is full
    void WriteBlock(unsigned long numFrames);

    /// Completes the file and gives it its name. Returns whether an older file of that name went to the trash.
    /// @throws SoundError when that fails; the text then says where the new file is
    bool Finish();

private:
    SoundError NotAllFits() const;

    PendingFile file;  // outlives the writer, which holds it open
    std::unique_ptr<velmodsp::AudioFileWriter> writer;
    velmodsp::AudioBuffer block;
};

}  // namespace velmohost
