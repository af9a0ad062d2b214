#include "platform/VelmoDspSystemSoundFile.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "files/VelmoDspFile.h"
#include "platform/VelmoDspFileSystem.h"
#include "platform/sndfile/VelmoDspMpegSearch.h"
#include "platform/sndfile/VelmoDspSndfileFormat.h"
#include "platform/sndfile/VelmoDspSndfileLibrary.h"

namespace velmodsp {
namespace {

constexpr int SetOriginalSampleRate = 0x1500;  // a command that headers before version 1.1 have no name for
constexpr int OpusSampleRate = 48000;          // what every Opus stream is decoded at, whatever it was made from

/// A file that stays the same one until it is closed, even when another takes its name.
class OpenFile {
public:
    explicit OpenFile(const File& file)
        : size(FileSystem::GetSize(file.GetFullPathName()).value_or(0)),
          descriptor(FileSystem::OpenForReading(file.GetFullPathName())) {}
    ~OpenFile() {
        if (IsOpen()) FileSystem::Close(descriptor);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    bool IsOpen() const { return descriptor >= 0; }
    int Descriptor() const { return descriptor; }
    std::int64_t Size() const { return size; }
    bool SeekTo(std::int64_t position) const { return FileSystem::SeekTo(descriptor, position) == position; }

private:
    const std::int64_t size;
    const int descriptor;
};

/// Serves a file to libsndfile as a stream without an end, from an offset on. MPEG audio says nowhere for certain how
/// long it is: where its first frame does not tell, libsndfile would guess from the size of the file, and not decode
/// what is beyond the guess.
class EndlessStream {
public:
    EndlessStream(const OpenFile& openFile, std::int64_t firstByte) : file(openFile), start(firstByte) {}

    std::int64_t Start() const { return start; }

    static SF_VIRTUAL_IO Functions() {
        SF_VIRTUAL_IO functions{};
        functions.get_filelen = [](void* stream) { return Of(stream).file.Size() - Of(stream).start; };
        functions.seek = Seek;
        functions.read = [](void* bytes, sf_count_t count, void* stream) -> sf_count_t {
            const int descriptor = Of(stream).file.Descriptor();
            return std::max<sf_count_t>(FileSystem::Read(descriptor, bytes, static_cast<std::size_t>(count)), 0);
        };
        functions.write = [](const void*, sf_count_t, void*) -> sf_count_t { return 0; };
        functions.tell = Tell;
        return functions;
    }

private:
    static const EndlessStream& Of(void* stream) { return *static_cast<const EndlessStream*>(stream); }

    static sf_count_t Tell(void* stream) {
        return FileSystem::GetOffset(Of(stream).file.Descriptor()) - Of(stream).start;
    }

    static sf_count_t Seek(sf_count_t offset, int whence, void* stream) {
        if (whence == SEEK_END) return -1;
        const sf_count_t target = whence == SEEK_CUR ? Tell(stream) + offset : offset;
        return target >= 0 && Of(stream).file.SeekTo(Of(stream).start + target) ? target : -1;
    }

    const OpenFile& file;
    const std::int64_t start;  // file offset of the stream's first byte
};

class SndfileSound final : public SystemSoundFile {
public:
    /// Opens the file as libsndfile finds it.
    static std::unique_ptr<SndfileSound> OpenPlain(const File& file) { return OpenWith(file, std::nullopt); }
    /// Opens it as a stream of MPEG audio that begins at a file offset.
    static std::unique_ptr<SndfileSound> OpenMpeg(const File& file, std::int64_t start) {
        std::unique_ptr<SndfileSound> sound = OpenWith(file, start);
        return sound != nullptr && sound->IsMpeg() ? std::move(sound) : nullptr;
    }

    ~SndfileSound() override { Close(); }

    bool IsMpeg() const { return format.kind == SoundFileKind::Mp3; }

    std::size_t Read(int* words, std::size_t numFrames) override {
        if (handle == nullptr) return 0;
        const std::size_t count = IsMpeg() ? ReadInPieces(words, numFrames) : ReadFrames(words, numFrames);
        OrderChannels(words, count);
        return count;
    }

    bool Rewind() override {
        const SF_INFO before = info;
        if (OpenHandle() && info.channels == before.channels && info.format == before.format) return true;
        Close();  // the file has been overwritten
        return false;
    }

    bool SeekTo(unsigned long long frame) override {
        const auto target = static_cast<sf_count_t>(frame);
        return handle != nullptr && library.seek(handle, target, SEEK_SET) == target;
    }

private:
    SndfileSound(const SndfileLibrary& sndfile, const File& soundFile, std::optional<std::int64_t> streamStart)
        : library(sndfile), file(soundFile) {
        if (streamStart) stream.emplace(file, *streamStart);
    }

    static std::unique_ptr<SndfileSound> OpenWith(const File& file, std::optional<std::int64_t> streamStart) {
        const SndfileLibrary* const library = SndfileLibrary::Get();
        if (library == nullptr) return nullptr;
        std::unique_ptr<SndfileSound> sound(new SndfileSound(*library, file, streamStart));
        if (!sound->file.IsOpen() || !sound->OpenHandle()) return nullptr;
        sound->DescribeFormat();
        return sound;
    }

    /// Everything is started over with a new handle: seeks to the first frame leave decoders in another state.
    bool OpenHandle() {
        Close();
        if (!file.SeekTo(stream ? stream->Start() : 0)) return false;
        info = {};
        SF_VIRTUAL_IO functions = EndlessStream::Functions();
        handle = stream ? library.openVirtual(&functions, SFM_READ, &info, &*stream)
                        : library.openDescriptor(file.Descriptor(), SFM_READ, &info, SF_FALSE);
        if (handle == nullptr) return false;
        if (EncodingNumber() == OpusEncoding) DecodeAtFullRate();
        return true;
    }

    void Close() {
        if (handle != nullptr) library.close(handle);
        handle = nullptr;
    }

    /// libsndfile halves the rate, or worse, when a header says that the sound was made from a lower one.
    void DecodeAtFullRate() {
        int rate = OpusSampleRate;
        library.command(handle, SetOriginalSampleRate, &rate, sizeof rate);
        library.command(handle, SFC_GET_CURRENT_SF_INFO, &info, sizeof info);
    }

    void DescribeFormat() {
        const SndfileEncoding encoding = EncodingOf(Container(), EncodingNumber());
        format.kind = KindOf(Container(), EncodingNumber());
        format.sampleRate = info.samplerate;
        format.numChannels = static_cast<unsigned int>(std::max(info.channels, 0));
        format.bitsPerSample = encoding.bits;
        format.usesFloatingPointData = encoding.isFloat;
        format.seeksExactly = encoding.seeksExactly && info.seekable != 0;
        if (info.frames >= 0 && info.frames < SF_COUNT_MAX)
            format.numFrames = static_cast<unsigned long long>(info.frames);
        channelOrder = CodedChannelOrder(format.kind, format.numChannels);
        codedFrame.resize(channelOrder.size());
    }

    int Container() const { return info.format & SF_FORMAT_TYPEMASK; }
    int EncodingNumber() const { return info.format & SF_FORMAT_SUBMASK; }

    std::size_t ReadFrames(int* words, std::size_t numFrames) {
        const auto n = static_cast<sf_count_t>(numFrames);
        const sf_count_t count = format.usesFloatingPointData
                                     ? library.readFloats(handle, reinterpret_cast<float*>(words), n)
                                     : library.readInts(handle, words, n);
        return static_cast<std::size_t>(std::max<sf_count_t>(count, 0));
    }

    /// A read of MPEG audio that meets damage, such as the end of a file cut short, gives none of the frames that it
    /// decoded before. So each read is of a few frames.
    std::size_t ReadInPieces(int* words, std::size_t numFrames) {
        constexpr std::size_t MaxPiece = 64;
        std::size_t done = 0;
        while (done < numFrames) {
            const std::size_t count =
                ReadFrames(words + done * format.numChannels, std::min(MaxPiece, numFrames - done));
            if (count == 0) break;
            done += count;
        }
        return done;
    }

    void OrderChannels(int* words, std::size_t numFrames) {
        if (channelOrder.empty()) return;
        for (int* frame = words; frame != words + numFrames * codedFrame.size(); frame += codedFrame.size()) {
            std::copy_n(frame, codedFrame.size(), codedFrame.begin());
            for (std::size_t k = 0; k < codedFrame.size(); ++k) frame[k] = codedFrame[channelOrder[k]];
        }
    }

    const SndfileLibrary& library;
    const OpenFile file;
    std::optional<EndlessStream> stream;  // how the file is opened, unless by its descriptor
    SNDFILE* handle = nullptr;
    SF_INFO info{};
    std::vector<unsigned int> channelOrder;  // as `CodedChannelOrder`
    std::vector<int> codedFrame;
};

}  // namespace

std::unique_ptr<SystemSoundFile> SystemSoundFile::Open(const File& file) {
    std::unique_ptr<SndfileSound> sound = SndfileSound::OpenPlain(file);
    return sound != nullptr && sound->IsMpeg() ? SndfileSound::OpenMpeg(file, 0) : std::move(sound);
}

std::unique_ptr<SystemSoundFile> SystemSoundFile::OpenMp3(const File& file) {
    if (std::unique_ptr<SndfileSound> sound = SndfileSound::OpenMpeg(file, 0)) return sound;
    const OpenFile openFile(file);
    if (!openFile.IsOpen()) return nullptr;
    for (const std::int64_t offset : FindMpegFrames(openFile.Descriptor()))
        if (std::unique_ptr<SndfileSound> sound = SndfileSound::OpenMpeg(file, offset)) return sound;
    return nullptr;
}

}  // namespace velmodsp
