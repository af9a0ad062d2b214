#include "platform/VelmoDspSystemSoundFile.h"

// Has the identifiers of the headers below defined here, and must be the first one.
#include <initguid.h>

#include "platform/windows/VelmoDspMediaFoundation.h"
// After windows.h.
#include <propidl.h>
#include <wrl/client.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "files/VelmoDspFile.h"
#include "platform/windows/VelmoDspWideText.h"

namespace velmodsp {
namespace {

using Microsoft::WRL::ComPtr;

constexpr DWORD SoundStream = static_cast<DWORD>(MF_SOURCE_READER_FIRST_AUDIO_STREAM);
constexpr double TicksPerSecond = 1e7;  // the service counts time in steps of 100 ns
const GUID TimeInTicks{};

std::wstring WidePath(const File& file) {
    std::wstring path = ToWide(file.GetFullPathName());
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return path;
}

SoundFileKind KindOf(const GUID& encoding) {
    if (encoding == MFAudioFormat_MP3 || encoding == MFAudioFormat_MPEG) return SoundFileKind::Mp3;
    if (encoding == MFAudioFormat_FLAC) return SoundFileKind::Flac;
    if (encoding == MFAudioFormat_Opus) return SoundFileKind::Opus;
    if (encoding == MFAudioFormat_Vorbis) return SoundFileKind::Vorbis;
    if (encoding == MFAudioFormat_AAC || encoding == MFAudioFormat_ALAC) return SoundFileKind::Mpeg4;
    return SoundFileKind::Other;
}

bool IsLosslessCompression(const GUID& encoding) {
    return encoding == MFAudioFormat_FLAC || encoding == MFAudioFormat_ALAC;
}

/// What a media type says of sound.
struct SoundType {
    GUID encoding{};
    UINT32 samplesPerSecond = 0, numChannels = 0, bitsPerSample = 0;

    bool operator==(const SoundType& other) const {
        return encoding == other.encoding && samplesPerSecond == other.samplesPerSecond &&
               numChannels == other.numChannels && bitsPerSample == other.bitsPerSample;
    }
};

SoundType Describe(IMFMediaType& type) {
    SoundType sound;
    type.GetGUID(MF_MT_SUBTYPE, &sound.encoding);
    type.GetUINT32(MF_MT_AUDIO_SAMPLES_PER_SECOND, &sound.samplesPerSecond);
    type.GetUINT32(MF_MT_AUDIO_NUM_CHANNELS, &sound.numChannels);
    type.GetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, &sound.bitsPerSample);
    return sound;
}

/// One sample as the service gives it, little-endian, as a left-justified word; the bits of a float stay as they are.
int WordOf(const unsigned char* bytes, std::size_t size) {
    if (size == 1) return static_cast<int>((bytes[0] ^ 0x80u) << 24);  // depths of 8 bits are unsigned
    std::uint32_t word = 0;
    for (std::size_t i = 0; i < size; ++i) word |= static_cast<std::uint32_t>(bytes[i]) << 8 * (4 - size + i);
    return static_cast<int>(word);
}

/// A file behind the system's media service, which hands out decoded buffers of whatever length it likes.
class MediaFoundationSound final : public SystemSoundFile {
public:
    MediaFoundationSound(const MediaFoundation& mediaFoundation, const File& file)
        : service(mediaFoundation), path(WidePath(file)) {}

    bool Open() {
        if (!OpenReader()) return false;
        DescribeFormat();
        return true;
    }

    std::size_t Read(int* words, std::size_t numFrames) override {
        std::size_t done = 0;
        while (done < numFrames && (NumBuffered() > 0 || ReadBuffer()))
            done += TakeFrames(words + done * output.numChannels, numFrames - done);
        return done;
    }

    bool Rewind() override {
        const SoundType before = output;
        if (OpenReader() && output == before) return true;
        reader.Reset();  // another file has taken the name
        output = before;
        return false;
    }

    /// The service goes to somewhere before the frame, and tells by the time of the next buffer where that is.
    bool SeekTo(unsigned long long frame) override {
        if (reader == nullptr) return false;
        PROPVARIANT position{};
        position.vt = VT_I8;
        const double ticks = static_cast<double>(frame) * TicksPerSecond / output.samplesPerSecond;
        position.hVal.QuadPart = static_cast<LONGLONG>(std::ceil(ticks));  // the tick before is the frame before
        DropBuffer();
        if (FAILED(reader->SetCurrentPosition(TimeInTicks, position)) || !ReadBuffer()) return false;

        while (FrameAt(bufferTime) + buffer.size() / BytesPerFrame() <= frame)
            if (!ReadBuffer()) return false;
        if (FrameAt(bufferTime) > frame) return false;
        taken = static_cast<std::size_t>(frame - FrameAt(bufferTime)) * BytesPerFrame();
        return true;
    }

private:
    bool OpenReader() {
        reader.Reset();
        DropBuffer();
        ComPtr<IMFByteStream> stream;
        if (FAILED(service.createFile(MF_ACCESSMODE_READ, MF_OPENMODE_FAIL_IF_NOT_EXIST, MF_FILEFLAGS_NONE,
                                      path.c_str(), stream.GetAddressOf())) ||
            FAILED(service.createSourceReader(stream.Get(), nullptr, reader.GetAddressOf())))
            return false;
        if (SelectSound()) return true;
        reader.Reset();
        return false;
    }

    /// Chooses the first stream of sound and the form it is decoded to: integers, of the depth that they have in the
    /// file, for what is stored without loss.
    bool SelectSound() {
        ComPtr<IMFMediaType> nativeType;
        reader->SetStreamSelection(static_cast<DWORD>(MF_SOURCE_READER_ALL_STREAMS), FALSE);
        if (FAILED(reader->SetStreamSelection(SoundStream, TRUE)) ||
            FAILED(reader->GetNativeMediaType(SoundStream, 0, nativeType.GetAddressOf())))
            return false;
        const SoundType stored = Describe(*nativeType.Get());
        encoding = stored.encoding;
        const bool hasIntegers = encoding == MFAudioFormat_PCM || IsLosslessCompression(encoding);
        const bool isSelected = (hasIntegers && Select(MFAudioFormat_PCM, stored.bitsPerSample)) ||
                                Select(MFAudioFormat_Float, 32) || Select(MFAudioFormat_PCM, 16);
        return isSelected && GetOutput(output) && output.numChannels > 0 && output.samplesPerSecond > 0 &&
               output.bitsPerSample % 8 == 0 && output.bitsPerSample >= 8 && output.bitsPerSample <= 32;
    }

    bool Select(const GUID& decodedEncoding, UINT32 bits) {
        ComPtr<IMFMediaType> wanted;
        return SUCCEEDED(service.createMediaType(wanted.GetAddressOf())) &&
               SUCCEEDED(wanted->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Audio)) &&
               SUCCEEDED(wanted->SetGUID(MF_MT_SUBTYPE, decodedEncoding)) &&
               SUCCEEDED(wanted->SetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, bits)) &&
               SUCCEEDED(reader->SetCurrentMediaType(SoundStream, nullptr, wanted.Get()));
    }

    bool GetOutput(SoundType& type) const {
        ComPtr<IMFMediaType> current;
        if (FAILED(reader->GetCurrentMediaType(SoundStream, current.GetAddressOf()))) return false;
        type = Describe(*current.Get());
        return true;
    }

    void DescribeFormat() {
        format.kind = KindOf(encoding);
        format.sampleRate = output.samplesPerSecond;
        format.numChannels = output.numChannels;
        format.bitsPerSample = output.bitsPerSample;
        format.usesFloatingPointData = output.encoding == MFAudioFormat_Float;
        // Of other formats the service knows the duration roughly, and seeks about as well.
        format.seeksExactly = IsLosslessCompression(encoding);
        PROPVARIANT duration{};
        if (format.seeksExactly &&
            SUCCEEDED(reader->GetPresentationAttribute(static_cast<DWORD>(MF_SOURCE_READER_MEDIASOURCE), MF_PD_DURATION,
                                                       &duration)) &&
            duration.vt == VT_UI8)
            format.numFrames = FrameAt(static_cast<LONGLONG>(duration.uhVal.QuadPart));
    }

    void DropBuffer() {
        buffer.clear();
        taken = 0;
    }

    std::size_t BytesPerFrame() const { return std::size_t{output.numChannels} * output.bitsPerSample / 8; }
    std::size_t NumBuffered() const { return (buffer.size() - taken) / BytesPerFrame(); }

    unsigned long long FrameAt(LONGLONG time) const {
        const double frame =
            static_cast<double>(std::max<LONGLONG>(time, 0)) * output.samplesPerSecond / TicksPerSecond;
        return static_cast<unsigned long long>(std::llround(frame));
    }

    std::size_t TakeFrames(int* words, std::size_t maxFrames) {
        const std::size_t numFrames = std::min(maxFrames, NumBuffered());
        const std::size_t sampleSize = output.bitsPerSample / 8;
        const unsigned char* sample = buffer.data() + taken;
        for (std::size_t i = 0; i < numFrames * output.numChannels; ++i, sample += sampleSize)
            words[i] = WordOf(sample, sampleSize);
        taken += numFrames * BytesPerFrame();
        return numFrames;
    }

    /// Replaces the buffer by the next one. @return false at the end, after an error, or where the sound turns into one
    /// of another rate or another number of channels
    bool ReadBuffer() {
        DropBuffer();
        while (reader != nullptr && buffer.empty()) {
            DWORD flags = 0;
            ComPtr<IMFSample> sample;
            if (FAILED(reader->ReadSample(SoundStream, 0, nullptr, &flags, &bufferTime, sample.GetAddressOf())))
                return false;
            if ((flags & (MF_SOURCE_READERF_ENDOFSTREAM | MF_SOURCE_READERF_ERROR)) != 0) return false;
            SoundType type;
            if ((flags & MF_SOURCE_READERF_CURRENTMEDIATYPECHANGED) != 0 && !(GetOutput(type) && type == output))
                return false;
            if (sample != nullptr && !CopyBytes(*sample.Get())) return false;
        }
        return !buffer.empty();
    }

    bool CopyBytes(IMFSample& sample) {
        ComPtr<IMFMediaBuffer> bytes;
        BYTE* data = nullptr;
        DWORD size = 0;
        if (FAILED(sample.ConvertToContiguousBuffer(bytes.GetAddressOf())) ||
            FAILED(bytes->Lock(&data, nullptr, &size)))
            return false;
        buffer.assign(data, data + size - size % BytesPerFrame());
        bytes->Unlock();
        return true;
    }

    const MediaFoundation& service;
    const std::wstring path;
    ComPtr<IMFSourceReader> reader;
    GUID encoding{};   // of the file
    SoundType output;  // of what is decoded
    std::vector<unsigned char> buffer;
    std::size_t taken = 0;  // bytes of the buffer
    LONGLONG bufferTime = 0;
};

}  // namespace

std::unique_ptr<SystemSoundFile> SystemSoundFile::Open(const File& file) {
    const MediaFoundation* const service = MediaFoundation::Get();
    if (service == nullptr) return nullptr;
    auto sound = std::make_unique<MediaFoundationSound>(*service, file);
    return sound->Open() ? std::move(sound) : nullptr;
}

std::unique_ptr<SystemSoundFile> SystemSoundFile::OpenMp3(const File& file) {
    std::unique_ptr<SystemSoundFile> sound = Open(file);
    if (sound == nullptr) return nullptr;
    // The service as Wine has it hands out decoded sound, and does not tell from what.
    const SoundFileKind kind = sound->GetFormat().kind;
    return kind == SoundFileKind::Mp3 || kind == SoundFileKind::Other ? std::move(sound) : nullptr;
}

}  // namespace velmodsp
