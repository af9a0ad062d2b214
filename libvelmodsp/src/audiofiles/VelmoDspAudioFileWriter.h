#pragma once

#include <memory>

#include "audiofiles/VelmoDspAudioFilesManager.h"
#include "audiofiles/VelmoDspFrameConversion.h"
#include "files/VelmoDspFileWriter.h"
#include "math/VelmoDspVector.h"

namespace velmodsp {

class AudioBuffer;

/// Writes 32-bit floats into a sound file, block after block, of any length with flat memory. The header is written
/// when the file is opened and again, with the final sizes, when the file is finished: by `Finish`, which tells whether
/// that went well, or when the writer is destroyed.
///
///     const File file("~/out.wav");
///     std::unique_ptr<AudioFileWriter> writer = AudioFileWriter::CreateWriterFor(file, 48000.0, 2, 24, true);
///     if (!writer->WriteSamples(block, 0, block.GetNumSamples())) ...  // disk full, or no right to write there
///     if (!writer->Finish()) ...                                       // likewise
///
/// Integer files hold -1 to 1, rounded to 32 bits and then cut to the file's depth; what lies beyond, infinities
/// included, becomes full scale, and NaN becomes 0. A 32-bit WAV file holds the floats as they are, bit for bit; a
/// 32-bit AIFF file holds integers.
///
/// Threads: one thread at a time, never the audio thread: all but the getters do file I/O or allocate.
class AudioFileWriter : public AudioFilesManager {
public:
    /// Opens a new file, as AIFF or WAV by its extension (".aiff", ".aif", ".wav", ".bwf"). Makes missing folders.
    /// @param sampleRate 4410, 8820, 11025, 22050, 32000, 44100, 48000, 88200, 96000, 176400 or 192000 Hz
    /// @param numChannels 1 to 65535
    /// @param bitsPerSample 8, 16, 24 or 32; 32 without it
    /// @param overwrite whether an existing file goes to the trash; otherwise it is an error
    /// @return null when the path is empty or its folder cannot be made
    /// @throws Exception that names the argument or the file that is in the way
    static std::unique_ptr<AudioFileWriter> CreateWriterFor(const File& file, double sampleRate,
                                                            unsigned int numChannels, int bitsPerSample,
                                                            bool overwrite);
    static std::unique_ptr<AudioFileWriter> CreateWriterFor(const File& file, double sampleRate,
                                                            unsigned int numChannels, bool overwrite);

    AudioFileWriter(const AudioFileWriter&) = delete;
    AudioFileWriter& operator=(const AudioFileWriter&) = delete;

    /// "WAV File" or "AIFF File".
    virtual String GetFormat() const = 0;
    /// ".wav" or ".aiff".
    virtual String GetDefaultFileExtensionForThisFormat() const = 0;
    /// Whether the header last written is the 64-bit form of WAV.
    virtual bool IsRF64() const { return false; }

    virtual ~AudioFileWriter() = default;

    /// Appends frames of 32-bit words: integers left-justified (full scale is 2^31), for float files the floats' bits.
    /// @param channels `GetNumChannels()` pointers to `numSamples` words each
    /// @return false after this or an earlier write failed; the file then holds the blocks before
    virtual bool writeSamples(const int** channels, unsigned long numSamples);

    /// Appends the buffer's first channels, as many as the file has, from `sourceStartSample` on.
    /// @return false when the buffer has fewer channels or samples, or as `writeSamples`
    bool WriteSamples(const AudioBuffer& source, unsigned long sourceStartSample, unsigned long numSamples);

    /// Completes the file, once; nothing can be written afterwards.
    /// @return false when this or a write before it failed, as on a full disk
    bool Finish();

    /// Whether a write failed. Nothing is written any more then.
    bool HasFailed() const noexcept { return failed; }

protected:
    /// Opens the file and keeps the format. The derived class then writes the first header.
    /// @param format of the samples in the file
    /// @param maxBytes the most bytes of samples that the file can hold
    AudioFileWriter(const File& file, double sampleRateInHz, unsigned int channelCount, int bits, SampleFormat format,
                    unsigned long long maxBytes);

    /// (Re)writes the header with the sizes so far. The output stands behind it afterwards.
    virtual bool writeHeader() = 0;

    /// Writes what completes the file: the header, and whatever the format has behind the samples.
    virtual bool Complete() { return writeHeader(); }

    /// Checks the format and makes way for the file: everything that can refuse a file before it is opened.
    /// @return false when the folder cannot be made
    /// @throws Exception as `CreateWriterFor`
    static bool Prepare(const File& file, double sampleRate, unsigned int numChannels, int bitsPerSample,
                        bool overwrite);

    unsigned long long GetBytesPerFrame() const noexcept { return bitsPerSample * 1ull * numChannels / 8; }
    /// Bytes of all frames written.
    unsigned long long GetDataSize() const noexcept { return lengthInSamples * GetBytesPerFrame(); }

    FileWriter output;
    unsigned long long headerPosition = 0;  // file offset
    unsigned long long bytesWritten = 0;    // of samples
    bool failed = false;

private:
    bool WriteFrames(SampleForm form, const int* const* channels, unsigned long numFrames);
    bool WriteBlock(SampleForm form, const int* const* channels, unsigned long firstFrame, unsigned long numFrames);

    bool finished = false;
    SampleFormat sampleFormat;
    unsigned long long maximumDataSize;  // bytes
    Vector<const int*> channelPointers;  // one per channel, and a null
    Vector<unsigned char> interleaved;   // one block as it lies in the file
};

}  // namespace velmodsp
