#pragma once

#include <iosfwd>
#include <vector>

#include "math/VelmoDspVector.h"
#include "utils/VelmoDspCompilerChecks.h"

namespace velmodsp {

class File;
class String;
template <typename T>
class Matrix;

/// Block of 32-bit float samples of several channels, either owned or referring to somebody else's channels.
///
/// An owned block is one allocation, channel after channel: channel k holds samples [k * numSamples, (k + 1) *
/// numSamples). A referencing buffer only keeps pointers; the memory behind them must outlive every use. Samples may be
/// anything, NaN and infinity included.
///
///     AudioBuffer buffer(2, 512, true);                       // set-up: owns 2 channels of 512 samples
///     buffer.CopyFrom(0, 0, hostLeft, n, 1.0f);               // audio thread: 64-bit host block into channel 0
///     buffer.ApplyRamp(0.0f, 1.0f);                           // fade in
///
///     AudioBuffer view(2, 0, false);                          // owns nothing
///     view.ReferenceExternalData(hostChannels, 2, n, 0);      // audio thread: up to 16 channels without allocation
///
/// Gains are linear factors. Channel indices and sample ranges are the caller's to keep in range: the operations on one
/// channel do not check them.
///
/// Whole buffers go to and from matrices, text and files in one call:
///
///     AudioBuffer take(1, 0, true);
///     bool loaded = take.LoadFromAudioFile(File("~/take.wav"));
///     bool saved = take.SaveAsMatFile(File("~/take.mat"), "take");
///
/// Threads: one thread at a time. Constructor, destructor, `Resize` and what resizes allocate or free;
/// `ReferenceExternalData` and `Permute` allocate when they meet more channels than ever before
/// (`ReferenceExternalData`: more than 16); conversions to matrices, text and files allocate and block; everything else
/// is real-time safe. `FillChannelWithNoise` draws from `rand()`, which some platforms lock.
class AudioBuffer {
public:
    /// Samples per block for callers that have no host block size yet.
    static constexpr unsigned long DefaultBufferSize = 512;

    /// A buffer of these sizes; the samples of a fresh block are not cleared.
    /// @param allocate whether to own a block; without one the channels point nowhere until `ReferenceExternalData`
    /// or `Resize`
    /// @throws Exception "memory allocation failed"
    AudioBuffer(unsigned int numChannels, unsigned long numSamples, bool allocate);

    // Two buffers would share channel pointers, so a copy is always spelled out with CopyFrom.
    AudioBuffer(const AudioBuffer&) = delete;
    AudioBuffer& operator=(const AudioBuffer&) = delete;

    /// Frees the block that this buffer allocated, never referenced memory.
    virtual ~AudioBuffer();

    /// Makes channel k point at `channels[k] + offset`. A block that is owned stays, unused, until `Resize`.
    /// @param channels `numChannels` pointers, each to at least `offset + numSamples` samples; the table is not kept
    /// @throws Exception when memory for the channel table runs out
    virtual void ReferenceExternalData(float** channels, unsigned int numChannels, unsigned long numSamples,
                                       unsigned long offset);

    /// Gives the buffer a block of its own in these sizes. Does nothing when both are unchanged and the buffer was
    /// built as owner, so it may be called at every set-up. After a change the samples mean nothing.
    /// @throws Exception "memory re-allocation failed (numChannels = …, numSamples = …)"; the buffer is then unchanged
    virtual void Resize(unsigned int numChannels, unsigned long numSamples);

    /// Resizes to these sizes and takes frame after frame: channel k, sample i = src[i * numChannels + k].
    /// @throws Exception as `Resize`
    virtual void SetSamplesFromInterleavedBuffer(const float* src, unsigned long numSamples, unsigned int numChannels);
    virtual void SetSamplesFromInterleavedBuffer(const double* src, unsigned long numSamples, unsigned int numChannels);

    /// Flips the sign bit of every sample, so zeros and NaNs change sign too.
    virtual void InvertPhase();
    virtual void InvertPhase(unsigned int channel);

    /// Multiplies every sample by `gain`.
    virtual void ApplyGain(float gain);
    virtual void ApplyGain(unsigned int channel, float gain);

    /// Multiplies by a gain that runs in a straight line from `startGain` at the first sample to exactly `endGain` at
    /// the last. A single sample gets `endGain`.
    virtual void ApplyRamp(float startGain, float endGain);
    virtual void ApplyRamp(unsigned int channel, float startGain, float endGain);

    /// Sets every sample to 0.
    virtual void Zero();

    /// Adds or copies channel k of `src`, times `gain`, for every channel k of this buffer, over the shorter length.
    /// @param src a buffer of at least as many channels
    virtual void AddFrom(const AudioBuffer& src, float gain);
    virtual void CopyFrom(const AudioBuffer& src, float gain);

    /// One channel of `src` from `srcStart` on, into this buffer's `destChannel` at `destStart`, as many samples as
    /// both sides have left. Copying with a gain of exactly 1 keeps every bit. The ramps run over the samples taken.
    virtual void AddFrom(unsigned int destChannel, unsigned long destStart, const AudioBuffer& src,
                         unsigned int srcChannel, unsigned long srcStart, float gain);
    virtual void AddFromWithRamp(unsigned int destChannel, unsigned long destStart, const AudioBuffer& src,
                                 unsigned int srcChannel, unsigned long srcStart, float startGain, float endGain);
    virtual void CopyFromWithRamp(unsigned int destChannel, unsigned long destStart, const AudioBuffer& src,
                                  unsigned int srcChannel, unsigned long srcStart, float startGain, float endGain);
    virtual void CopyFrom(unsigned int destChannel, unsigned long destStart, const AudioBuffer& src,
                          unsigned int srcChannel, unsigned long srcStart, float gain);

    /// `numSamples` samples from raw memory, times `gain`. A gain of exactly 1 copies bit for bit.
    virtual void CopyFrom(unsigned int destChannel, unsigned long destStart, const float* src, unsigned long numSamples,
                          float gain);
    /// The same from 64-bit samples, narrowed before the gain. A gain of exactly 0 writes zeros and does not read
    /// `src`.
    virtual void CopyFrom(unsigned int destChannel, unsigned long destStart, const double* src,
                          unsigned long numSamples, float gain);
    virtual void AddFrom(unsigned int destChannel, unsigned long destStart, const float* src, unsigned long numSamples,
                         float gain);

    /// Reorders the channels by their pointers alone: channel k becomes what was channel `order[k]`.
    /// @param order `GetNumChannels()` valid channel indices
    /// @throws Exception when memory for the scratch table runs out
    virtual void Permute(const unsigned int* order);

    /// Folds a source of any number of channels into this buffer: source channel i goes to channel i modulo this
    /// buffer's channel count, the first ones copied, later ones added. Does nothing on a buffer without channels.
    virtual void MergeFrom(const AudioBuffer& src, float gain);

    virtual void Fill(float value);
    virtual void FillChannel(unsigned int channel, float value);

    /// Straight line from `start` at the first sample to exactly `end` at the last. A single sample becomes `end`.
    virtual void FillChannelWithRamp(unsigned int channel, float start, float end);

    /// White noise, uniform from -|amplitude| to |amplitude|, drawn from `rand()`.
    virtual void FillChannelWithNoise(unsigned int channel, float amplitude);
    virtual void FillWithNoise(float amplitude);

    /// Silence after a first sample of 1.
    virtual void Impulse(unsigned int channel);
    virtual void Impulse();

    /// Copies channel k into row k of a matrix of `GetNumChannels()` rows and `GetNumSamples()` columns. A matrix of
    /// this shape already is not reallocated.
    /// @throws Exception when there is no memory for the matrix
    virtual void CopyTo(Matrix<float>& matrix) const;
    /// Resizes to one channel a row and copies row k into channel k.
    /// @throws Exception as `Resize`
    virtual void CopyFrom(const Matrix<float>& matrix);

    /// Writes a data file for Matlab with one variable, a matrix of class single with a row for each channel. A file
    /// that is there already goes to the trash.
    /// @param variableName a letter, then letters, digits and underscores, 63 characters at most
    /// @return false when the file cannot be written; there is none then
    /// @throws Exception as `MatFileWriter::Write`
    virtual bool SaveAsMatFile(const File& file, const String& variableName) const;

    /// Writes a sound file, WAV or AIFF by its extension, as `AudioFileWriter` writes it: of 32 bits without
    /// `bitsPerSample`, which in a WAV file are the samples bit for bit.
    /// @param overwrite whether an existing file goes to the trash
    /// @return false when the format or the file is refused, for a reason that the console log has, or writing fails
    virtual bool SaveAsAudioFile(const File& file, double sampleRate, int bitsPerSample, bool overwrite) const;
    virtual bool SaveAsAudioFile(const File& file, double sampleRate, bool overwrite) const;
    /// A depth without the flag is a slip: it would count as the flag.
    bool SaveAsAudioFile(const File& file, double sampleRate, int bitsPerSample) const = delete;

    /// Resizes to the sound file's channels and length and reads all of it.
    /// @return false when there is no such file or no reader for it, for a reason that the console log has (the buffer
    /// is then unchanged), or when reading fails
    /// @throws Exception as `Resize`
    virtual bool LoadFromAudioFile(const File& file);
    /// The same with one channel of the file, which becomes the buffer's only one.
    /// @throws Exception "Invalid channel index …" when the file does not have it; the buffer is then unchanged
    virtual bool LoadFromAudioFile(const File& file, unsigned int channel);

    // Whatever is added to the virtual functions comes after these: the order is that of the virtual table.

    /// Writes the samples as text, a row for each channel, in the forms that `Matrix` has.
    /// @param precision decimals
    void Print(std::ostream& stream, unsigned int precision) const;
    void PrintMatlabLike(std::ostream& stream, unsigned int precision) const;
    void PrintLatexLike(std::ostream& stream, unsigned int precision) const;

    unsigned int GetNumChannels() const noexcept { return numChannels; }
    /// Samples per channel.
    unsigned long GetNumSamples() const noexcept { return numSamples; }
    /// First sample of channel `channel`.
    float* GetChannel(unsigned int channel) noexcept { return channels[channel]; }
    const float* GetChannel(unsigned int channel) const noexcept { return channels[channel]; }
    /// Table of the channel pointers, at least `GetNumChannels()` entries; valid until the next call that allocates.
    float** GetChannels() noexcept { return channels.data(); }
    /// Whether the buffer was built with a block of its own. `Resize` does not change the answer.
    bool OwnsData() const noexcept { return ownsData; }

private:
    void GrowChannelTable(unsigned int minimumSize);
    void PointChannelsAtBlock();
    /// Samples that both sides have left behind their starts.
    unsigned long CommonLength(unsigned long destStart, const AudioBuffer& src, unsigned long srcStart) const noexcept;
    template <typename Sample>
    void Deinterleave(const Sample* src);

    unsigned int numChannels;
    unsigned long numSamples;
    bool ownsData;
    std::vector<float*> channels;          // never shrinks, so that referencing again does not allocate
    Vector<float*> channelsBeforePermute;  // scratch of Permute
    float* block;                          // null while the buffer only refers to external data
};

}  // namespace velmodsp
