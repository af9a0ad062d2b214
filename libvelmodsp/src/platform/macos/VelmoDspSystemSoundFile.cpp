#include "platform/VelmoDspSystemSoundFile.h"

#include <AudioToolbox/AudioToolbox.h>
#include <CoreFoundation/CoreFoundation.h>

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <utility>

#include "files/VelmoDspFile.h"

namespace velmodsp {
namespace {

struct ReleaseUrl {
    void operator()(CFURLRef url) const { CFRelease(url); }
};
using Url = std::unique_ptr<std::remove_pointer_t<CFURLRef>, ReleaseUrl>;

Url UrlOf(const File& file) {
    const String& path = file.GetFullPathName();
    const auto* bytes = reinterpret_cast<const UInt8*>(path.C_Str());
    return Url(CFURLCreateFromFileSystemRepresentation(kCFAllocatorDefault, bytes,
                                                       static_cast<CFIndex>(std::strlen(path.C_Str())), false));
}

bool IsLosslessCompression(AudioFormatID format) {
    return format == kAudioFormatAppleLossless || format == kAudioFormatFLAC;
}

/// Both lossless compressions tell the depth of what was compressed by their flags.
unsigned int LosslessDepth(AudioFormatFlags flags) {
    switch (flags) {
        case kAppleLosslessFormatFlag_20BitSourceData:
            return 20;
        case kAppleLosslessFormatFlag_24BitSourceData:
            return 24;
        case kAppleLosslessFormatFlag_32BitSourceData:
            return 32;
        default:
            return 16;
    }
}

SoundFileKind KindOf(AudioFileTypeID type, AudioFormatID format) {
    if (format == kAudioFormatOpus && type != kAudioFileCAFType) return SoundFileKind::Opus;
    switch (type) {
        case kAudioFileMP1Type:
        case kAudioFileMP2Type:
        case kAudioFileMP3Type:
            return SoundFileKind::Mp3;
        case kAudioFileFLACType:
            return SoundFileKind::Flac;
        case kAudioFileCAFType:
            return SoundFileKind::Caf;
        case kAudioFileMPEG4Type:
        case kAudioFileM4AType:
        case kAudioFileM4BType:
            return SoundFileKind::Mpeg4;
        default:
            return SoundFileKind::Other;
    }
}

/// A file behind the system's service that reads and converts sound files.
class ExtAudioSound final : public SystemSoundFile {
public:
    explicit ExtAudioSound(const File& file) : url(UrlOf(file)) {}
    ~ExtAudioSound() override { Close(); }

    bool Open() { return url != nullptr && OpenHandle(); }

    std::size_t Read(int* words, std::size_t numFrames) override {
        if (handle == nullptr) return 0;
        const UInt32 bytesPerFrame = format.numChannels * static_cast<UInt32>(sizeof(int));
        UInt32 count = static_cast<UInt32>(std::min<std::size_t>(numFrames, 65536));
        AudioBufferList buffers{};
        buffers.mNumberBuffers = 1;
        buffers.mBuffers[0] = {format.numChannels, count * bytesPerFrame, words};
        return ExtAudioFileRead(handle, &count, &buffers) == noErr ? count : 0;
    }

    /// A converter that is moved back does not quite start over, so a new one is made.
    bool Rewind() override {
        const unsigned int numChannels = format.numChannels;
        if (OpenHandle() && format.numChannels == numChannels) return true;
        Close();  // another file has taken the name
        return false;
    }

    bool SeekTo(unsigned long long frame) override {
        return handle != nullptr && ExtAudioFileSeek(handle, static_cast<SInt64>(frame)) == noErr;
    }

private:
    bool OpenHandle() {
        Close();
        if (ExtAudioFileOpenURL(url.get(), &handle) != noErr) {
            handle = nullptr;
            return false;
        }
        if (DescribeFormat() && AskForWords()) return true;
        Close();
        return false;
    }

    void Close() {
        if (handle != nullptr) ExtAudioFileDispose(handle);
        handle = nullptr;
    }

    template <typename Value>
    bool GetProperty(ExtAudioFilePropertyID property, Value& value) const {
        UInt32 size = sizeof value;
        return ExtAudioFileGetProperty(handle, property, &size, &value) == noErr && size == sizeof value;
    }

    bool DescribeFormat() {
        AudioStreamBasicDescription data{};
        SInt64 numFrames = 0;
        if (!GetProperty(kExtAudioFileProperty_FileDataFormat, data) ||
            !GetProperty(kExtAudioFileProperty_FileLengthFrames, numFrames))
            return false;

        const bool isPlain = data.mFormatID == kAudioFormatLinearPCM;
        const bool isLossless = isPlain || IsLosslessCompression(data.mFormatID);
        format.kind = KindOf(FileType(), data.mFormatID);
        format.sampleRate = data.mSampleRate;
        format.numChannels = data.mChannelsPerFrame;
        format.usesFloatingPointData = !isLossless || (isPlain && (data.mFormatFlags & kAudioFormatFlagIsFloat) != 0);
        format.bitsPerSample = 32;
        if (isLossless) format.bitsPerSample = isPlain ? data.mBitsPerChannel : LosslessDepth(data.mFormatFlags);
        format.numFrames = static_cast<unsigned long long>(std::max<SInt64>(numFrames, 0));
        format.seeksExactly = isLossless;
        return true;
    }

    AudioFileTypeID FileType() const {
        AudioFileID file = nullptr;
        AudioFileTypeID type = 0;
        UInt32 size = sizeof type;
        if (!GetProperty(kExtAudioFileProperty_AudioFile, file) ||
            AudioFileGetProperty(file, kAudioFilePropertyFileFormat, &size, &type) != noErr)
            return 0;
        return type;
    }

    /// Interleaved words at the file's own rate: integers left-justified, or floats.
    bool AskForWords() {
        AudioStreamBasicDescription words{};
        words.mFormatID = kAudioFormatLinearPCM;
        words.mFormatFlags = kAudioFormatFlagsNativeEndian | kAudioFormatFlagIsPacked |
                             (format.usesFloatingPointData ? kAudioFormatFlagIsFloat : kAudioFormatFlagIsSignedInteger);
        words.mSampleRate = format.sampleRate;
        words.mChannelsPerFrame = format.numChannels;
        words.mBitsPerChannel = 32;
        words.mFramesPerPacket = 1;
        words.mBytesPerFrame = format.numChannels * static_cast<UInt32>(sizeof(int));
        words.mBytesPerPacket = words.mBytesPerFrame;
        return ExtAudioFileSetProperty(handle, kExtAudioFileProperty_ClientDataFormat, sizeof words, &words) == noErr;
    }

    const Url url;
    ExtAudioFileRef handle = nullptr;
};

}  // namespace

std::unique_ptr<SystemSoundFile> SystemSoundFile::Open(const File& file) {
    auto sound = std::make_unique<ExtAudioSound>(file);
    return sound->Open() ? std::move(sound) : nullptr;
}

std::unique_ptr<SystemSoundFile> SystemSoundFile::OpenMp3(const File& file) {
    std::unique_ptr<SystemSoundFile> sound = Open(file);
    return sound != nullptr && sound->GetFormat().kind == SoundFileKind::Mp3 ? std::move(sound) : nullptr;
}

}  // namespace velmodsp
