#include "utils/VelmoDspAudioBuffer.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <utility>

#include "audiofiles/VelmoDspAudioFileReader.h"
#include "audiofiles/VelmoDspAudioFileWriter.h"
#include "files/VelmoDspFile.h"
#include "math/VelmoDspMatrix.h"
#include "text/VelmoDspString.h"
#include "utils/VelmoDspException.h"
#include "utils/VelmoDspMemory.h"

namespace velmodsp {
namespace {

constexpr const char* AudioBufferSource = "libvelmodsp/src/utils/VelmoDspAudioBuffer";
constexpr unsigned int MinimumChannelTableSize = 16;

/// Sets `bytes` to the size of a block.
/// @return false when it is too large for any allocation
bool CountBlockBytes(unsigned int numChannels, unsigned long numSamples, unsigned long& bytes) {
    constexpr std::uint64_t maxSamples =
        std::min<std::uint64_t>(std::numeric_limits<std::ptrdiff_t>::max(), std::numeric_limits<unsigned long>::max()) /
        sizeof(float);
    if (numChannels != 0 && numSamples > maxSamples / numChannels) return false;
    bytes = static_cast<unsigned long>(numSamples * numChannels * sizeof(float));
    return true;
}

/// @throws Exception always: that of a lack of memory itself when there is none for the message either
[[noreturn]] void FailToResize(unsigned int numChannels, unsigned long numSamples) {
    try {
        throw Exception(
            String("memory re-allocation failed (numChannels = ") + numChannels + ", numSamples = " + numSamples + ")",
            AudioBufferSource, __LINE__, true, false);
    } catch (const std::bad_alloc& cause) {
        throw Exception(cause, AudioBufferSource, __LINE__, true, false);
    }
}

/// Calls `operation(i, value)` for the samples 0 to n - 1 of a straight line from `start` to exactly `end`.
///
/// The line is computed in double precision, so it has no steps however long it is, and in chunks counted by an int,
/// because processors convert vectors of 32-bit integers only.
template <typename Operation>
void AlongRamp(float start, float end, unsigned long n, Operation operation) {
    constexpr unsigned long chunkSize = 4096;
    if (n == 0) return;
    const unsigned long last = n - 1;
    const double step = last == 0 ? 0.0 : (static_cast<double>(end) - start) / static_cast<double>(last);
    for (unsigned long first = 0; first < last; first += chunkSize) {
        const int count = static_cast<int>(std::min(chunkSize, last - first));
        const double firstValue = start + static_cast<double>(first) * step;
        for (int i = 0; i < count; ++i)
            operation(first + static_cast<unsigned long>(i), static_cast<float>(firstValue + i * step));
    }
    operation(last, end);
}

void Scale(float* dest, const float* src, unsigned long n, float gain) {
    for (unsigned long i = 0; i < n; ++i) dest[i] = src[i] * gain;
}

void AddScaled(float* dest, const float* src, unsigned long n, float gain) {
    for (unsigned long i = 0; i < n; ++i) dest[i] += src[i] * gain;
}

/// Takes every `stride`-th sample of `src`, four to a store: compilers leave a plain loop of single ones as it is.
template <typename Sample>
void TakeChannel(float* dest, const Sample* src, unsigned long n, unsigned long stride) {
    const auto sample = [=](unsigned long i) { return static_cast<float>(src[i * stride]); };
    unsigned long i = 0;
    for (; i + 4 <= n; i += 4) {
        const float four[]{sample(i), sample(i + 1), sample(i + 2), sample(i + 3)};
        std::copy_n(four, 4, dest + i);
    }
    for (; i < n; ++i) dest[i] = sample(i);
}

/// Next random number of 31 bits. Where `rand()` has fewer (15 on Windows) three draws make one.
std::uint32_t Random31Bits() {
    std::uint32_t bits = static_cast<std::uint32_t>(std::rand());
    if constexpr (RAND_MAX < 0x7FFFFFFF) {
        bits = bits << 15 ^ static_cast<std::uint32_t>(std::rand());
        bits = bits << 15 ^ static_cast<std::uint32_t>(std::rand());
    }
    return bits & 0x7FFFFFFFu;
}

/// One row per channel.
Matrix<float> AsMatrix(const AudioBuffer& buffer) {
    Matrix<float> matrix;
    buffer.CopyTo(matrix);
    return matrix;
}

/// The reader or writer that `create` gives, null when there is none for the file. Why not is in the console log then,
/// where every exception reports itself.
template <typename Create>
auto CreateOrNull(const Create& create) -> decltype(create()) {
    try {
        return create();
    } catch (const Exception&) {
        return nullptr;
    }
}

std::unique_ptr<AudioFileReader> OpenReader(const File& file) {
    return CreateOrNull([&] { return AudioFileReader::CreateReaderFor(file); });
}

/// The file's samples per channel, as a buffer counts them.
unsigned long LengthInBuffer(const AudioFileReader& reader, const File& file) {
    const unsigned long long length = reader.GetLengthInSamples();
    if (!std::in_range<unsigned long>(length))
        throw Exception("Too long for a buffer : " + file.GetFullPathName(), AudioBufferSource, __LINE__, true, false);
    return static_cast<unsigned long>(length);
}

bool WriteAll(const AudioBuffer& buffer, AudioFileWriter* writer) {
    return writer != nullptr && writer->WriteSamples(buffer, 0, buffer.GetNumSamples()) && writer->Finish();
}

}  // namespace

AudioBuffer::AudioBuffer(unsigned int channelCount, unsigned long samplesPerChannel, bool allocate)
    : numChannels(channelCount), numSamples(samplesPerChannel), ownsData(allocate), block(nullptr) {
    GrowChannelTable(std::max(numChannels, MinimumChannelTableSize));
    if (!allocate) return;

    unsigned long bytes = 0;
    const bool countable = CountBlockBytes(numChannels, numSamples, bytes);
    if (countable && bytes != 0) block = static_cast<float*>(Malloc(bytes));
    if (!countable || (bytes != 0 && block == nullptr))
        throw Exception(String("memory allocation failed"), AudioBufferSource, __LINE__, true, false);
    PointChannelsAtBlock();
}

AudioBuffer::~AudioBuffer() { Free(block); }

void AudioBuffer::GrowChannelTable(unsigned int minimumSize) {
    if (channels.size() >= minimumSize) return;
    try {
        channels.resize(minimumSize, nullptr);
    } catch (const std::exception& cause) {
        throw Exception(cause, AudioBufferSource, __LINE__, true, false);
    }
}

void AudioBuffer::PointChannelsAtBlock() {
    for (unsigned int k = 0; k < numChannels; ++k) channels[k] = block == nullptr ? nullptr : block + k * numSamples;
}

void AudioBuffer::ReferenceExternalData(float** newChannels, unsigned int newNumChannels, unsigned long newNumSamples,
                                        unsigned long offset) {
    GrowChannelTable(newNumChannels);
    numChannels = newNumChannels;
    numSamples = newNumSamples;
    for (unsigned int k = 0; k < numChannels; ++k) channels[k] = newChannels[k] + offset;
}

void AudioBuffer::Resize(unsigned int newNumChannels, unsigned long newNumSamples) {
    if (newNumChannels == numChannels && newNumSamples == numSamples && ownsData) return;

    GrowChannelTable(newNumChannels);
    unsigned long bytes = 0;
    const bool countable = CountBlockBytes(newNumChannels, newNumSamples, bytes);
    if (countable && bytes == 0) {
        // Platforms disagree on a reallocation to 0 bytes: some free the block, some do not.
        Free(block);
        block = nullptr;
    } else {
        void* resized = countable ? Realloc(block, bytes) : nullptr;
        if (resized == nullptr) FailToResize(newNumChannels, newNumSamples);
        block = static_cast<float*>(resized);
    }
    numChannels = newNumChannels;
    numSamples = newNumSamples;
    PointChannelsAtBlock();
}

// In tiles of frames that stay in the first cache from the first channel to the last.
template <typename Sample>
void AudioBuffer::Deinterleave(const Sample* src) {
    constexpr unsigned long tileSize = 16384 / sizeof(Sample);
    const unsigned long framesPerTile = std::max(16ul, tileSize / std::max(1u, numChannels));
    for (unsigned long first = 0; first < numSamples; first += framesPerTile) {
        const unsigned long n = std::min(framesPerTile, numSamples - first);
        for (unsigned int k = 0; k < numChannels; ++k) {
            TakeChannel(channels[k] + first, src + first * numChannels + k, n, numChannels);
        }
    }
}

void AudioBuffer::SetSamplesFromInterleavedBuffer(const float* src, unsigned long newNumSamples,
                                                  unsigned int newNumChannels) {
    Resize(newNumChannels, newNumSamples);
    Deinterleave(src);
}

void AudioBuffer::SetSamplesFromInterleavedBuffer(const double* src, unsigned long newNumSamples,
                                                  unsigned int newNumChannels) {
    Resize(newNumChannels, newNumSamples);
    Deinterleave(src);
}

void AudioBuffer::InvertPhase() {
    for (unsigned int k = 0; k < numChannels; ++k) InvertPhase(k);
}

void AudioBuffer::InvertPhase(unsigned int channel) {
    float* samples = channels[channel];
    for (unsigned long i = 0; i < numSamples; ++i)
        samples[i] = std::bit_cast<float>(std::bit_cast<std::uint32_t>(samples[i]) ^ 0x80000000u);
}

void AudioBuffer::ApplyGain(float gain) {
    for (unsigned int k = 0; k < numChannels; ++k) ApplyGain(k, gain);
}

void AudioBuffer::ApplyGain(unsigned int channel, float gain) {
    float* samples = channels[channel];
    for (unsigned long i = 0; i < numSamples; ++i) samples[i] *= gain;
}

void AudioBuffer::ApplyRamp(float startGain, float endGain) {
    for (unsigned int k = 0; k < numChannels; ++k) ApplyRamp(k, startGain, endGain);
}

void AudioBuffer::ApplyRamp(unsigned int channel, float startGain, float endGain) {
    if (startGain == endGain) return ApplyGain(channel, startGain);
    float* samples = channels[channel];
    AlongRamp(startGain, endGain, numSamples, [=](unsigned long i, float gain) { samples[i] *= gain; });
}

void AudioBuffer::Zero() { Fill(0.0f); }

void AudioBuffer::AddFrom(const AudioBuffer& src, float gain) {
    for (unsigned int k = 0; k < numChannels; ++k) AddFrom(k, 0, src, k, 0, gain);
}

void AudioBuffer::CopyFrom(const AudioBuffer& src, float gain) {
    for (unsigned int k = 0; k < numChannels; ++k) CopyFrom(k, 0, src, k, 0, gain);
}

unsigned long AudioBuffer::CommonLength(unsigned long destStart, const AudioBuffer& src,
                                        unsigned long srcStart) const noexcept {
    if (destStart >= numSamples || srcStart >= src.numSamples) return 0;
    return std::min(numSamples - destStart, src.numSamples - srcStart);
}

void AudioBuffer::AddFrom(unsigned int destChannel, unsigned long destStart, const AudioBuffer& src,
                          unsigned int srcChannel, unsigned long srcStart, float gain) {
    const unsigned long n = CommonLength(destStart, src, srcStart);
    if (n != 0) AddFrom(destChannel, destStart, src.channels[srcChannel] + srcStart, n, gain);
}

void AudioBuffer::AddFromWithRamp(unsigned int destChannel, unsigned long destStart, const AudioBuffer& src,
                                  unsigned int srcChannel, unsigned long srcStart, float startGain, float endGain) {
    if (startGain == endGain) return AddFrom(destChannel, destStart, src, srcChannel, srcStart, startGain);
    const unsigned long n = CommonLength(destStart, src, srcStart);
    if (n == 0) return;
    float* dest = channels[destChannel] + destStart;
    const float* source = src.channels[srcChannel] + srcStart;
    AlongRamp(startGain, endGain, n, [=](unsigned long i, float gain) { dest[i] += source[i] * gain; });
}

void AudioBuffer::CopyFromWithRamp(unsigned int destChannel, unsigned long destStart, const AudioBuffer& src,
                                   unsigned int srcChannel, unsigned long srcStart, float startGain, float endGain) {
    if (startGain == endGain) return CopyFrom(destChannel, destStart, src, srcChannel, srcStart, startGain);
    const unsigned long n = CommonLength(destStart, src, srcStart);
    if (n == 0) return;
    float* dest = channels[destChannel] + destStart;
    const float* source = src.channels[srcChannel] + srcStart;
    AlongRamp(startGain, endGain, n, [=](unsigned long i, float gain) { dest[i] = source[i] * gain; });
}

void AudioBuffer::CopyFrom(unsigned int destChannel, unsigned long destStart, const AudioBuffer& src,
                           unsigned int srcChannel, unsigned long srcStart, float gain) {
    const unsigned long n = CommonLength(destStart, src, srcStart);
    if (n != 0) CopyFrom(destChannel, destStart, src.channels[srcChannel] + srcStart, n, gain);
}

void AudioBuffer::CopyFrom(unsigned int destChannel, unsigned long destStart, const float* src, unsigned long n,
                           float gain) {
    float* dest = channels[destChannel] + destStart;
    if (gain == 1.0f)
        std::copy_n(src, n, dest);
    else
        Scale(dest, src, n, gain);
}

void AudioBuffer::CopyFrom(unsigned int destChannel, unsigned long destStart, const double* src, unsigned long n,
                           float gain) {
    float* dest = channels[destChannel] + destStart;
    if (gain == 0.0f)
        std::fill_n(dest, n, 0.0f);
    else if (gain == 1.0f)
        for (unsigned long i = 0; i < n; ++i) dest[i] = static_cast<float>(src[i]);
    else
        for (unsigned long i = 0; i < n; ++i) dest[i] = static_cast<float>(src[i]) * gain;
}

void AudioBuffer::AddFrom(unsigned int destChannel, unsigned long destStart, const float* src, unsigned long n,
                          float gain) {
    AddScaled(channels[destChannel] + destStart, src, n, gain);
}

void AudioBuffer::Permute(const unsigned int* order) {
    ResizeVector(channelsBeforePermute, numChannels);
    for (unsigned int k = 0; k < numChannels; ++k) channelsBeforePermute[k] = channels[k];
    for (unsigned int k = 0; k < numChannels; ++k) channels[k] = channelsBeforePermute[order[k]];
}

void AudioBuffer::MergeFrom(const AudioBuffer& src, float gain) {
    if (numChannels == 0) return;
    for (unsigned int i = 0; i < src.numChannels; ++i) {
        if (i < numChannels)
            CopyFrom(i, 0, src, i, 0, gain);
        else
            AddFrom(i % numChannels, 0, src, i, 0, gain);
    }
}

void AudioBuffer::Fill(float value) {
    for (unsigned int k = 0; k < numChannels; ++k) FillChannel(k, value);
}

void AudioBuffer::FillChannel(unsigned int channel, float value) { std::fill_n(channels[channel], numSamples, value); }

void AudioBuffer::FillChannelWithRamp(unsigned int channel, float start, float end) {
    float* samples = channels[channel];
    AlongRamp(start, end, numSamples, [=](unsigned long i, float value) { samples[i] = value; });
}

void AudioBuffer::FillChannelWithNoise(unsigned int channel, float amplitude) {
    const double range = std::abs(static_cast<double>(amplitude));
    const double scale = 2.0 * range * 0x1p-31;
    float* samples = channels[channel];
    for (unsigned long i = 0; i < numSamples; ++i) samples[i] = static_cast<float>(Random31Bits() * scale - range);
}

void AudioBuffer::FillWithNoise(float amplitude) {
    for (unsigned int k = 0; k < numChannels; ++k) FillChannelWithNoise(k, amplitude);
}

void AudioBuffer::Impulse(unsigned int channel) {
    FillChannel(channel, 0.0f);
    if (numSamples != 0) channels[channel][0] = 1.0f;
}

void AudioBuffer::Impulse() {
    for (unsigned int k = 0; k < numChannels; ++k) Impulse(k);
}

void AudioBuffer::CopyTo(Matrix<float>& matrix) const {
    matrix.Resize(numChannels, numSamples);
    for (unsigned int k = 0; k < numChannels; ++k) std::copy_n(channels[k], numSamples, matrix.Data() + k * numSamples);
}

void AudioBuffer::CopyFrom(const Matrix<float>& matrix) {
    if (!std::in_range<unsigned int>(matrix.GetNumRows()))
        throw Exception("Too many rows for the channels of a buffer : " + String() + matrix.GetNumRows(),
                        AudioBufferSource, __LINE__, true, false);
    Resize(static_cast<unsigned int>(matrix.GetNumRows()), matrix.GetNumColumns());
    for (unsigned int k = 0; k < numChannels; ++k) std::copy_n(matrix.Data() + k * numSamples, numSamples, channels[k]);
}

bool AudioBuffer::SaveAsMatFile(const File& file, const String& variableName) const {
    return AsMatrix(*this).SaveAsMatFile(file, variableName, true);
}

bool AudioBuffer::SaveAsAudioFile(const File& file, double sampleRate, int bitsPerSample, bool overwrite) const {
    const auto writer = CreateOrNull(
        [&] { return AudioFileWriter::CreateWriterFor(file, sampleRate, numChannels, bitsPerSample, overwrite); });
    return WriteAll(*this, writer.get());
}

bool AudioBuffer::SaveAsAudioFile(const File& file, double sampleRate, bool overwrite) const {
    const auto writer =
        CreateOrNull([&] { return AudioFileWriter::CreateWriterFor(file, sampleRate, numChannels, overwrite); });
    return WriteAll(*this, writer.get());
}

bool AudioBuffer::LoadFromAudioFile(const File& file) {
    const auto reader = OpenReader(file);
    if (reader == nullptr) return false;
    Resize(reader->GetNumChannels(), LengthInBuffer(*reader, file));
    return reader->ReadSamples(*this, 0, numSamples, 0);
}

bool AudioBuffer::LoadFromAudioFile(const File& file, unsigned int channel) {
    const auto reader = OpenReader(file);
    if (reader == nullptr) return false;
    if (channel >= reader->GetNumChannels())
        throw Exception(String("Invalid channel index ") + channel + " for file " + file.GetFullPathName(),
                        AudioBufferSource, __LINE__, true, false);
    Resize(1, LengthInBuffer(*reader, file));
    return reader->ReadSamples(*this, 0, 0, numSamples, channel, 0);
}

void AudioBuffer::Print(std::ostream& stream, unsigned int precision) const {
    AsMatrix(*this).Print(stream, precision);
}

void AudioBuffer::PrintMatlabLike(std::ostream& stream, unsigned int precision) const {
    AsMatrix(*this).PrintMatlabLike(stream, precision);
}

void AudioBuffer::PrintLatexLike(std::ostream& stream, unsigned int precision) const {
    AsMatrix(*this).PrintLatexLike(stream, precision);
}

}  // namespace velmodsp
