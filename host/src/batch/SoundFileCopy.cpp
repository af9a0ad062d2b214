#include "batch/SoundFileCopy.h"

#include <algorithm>
#include <bit>
#include <filesystem>
#include <system_error>

#include "audiofiles/VelmoDspFrameConversion.h"
#include "core/PathText.h"
#include "sound/SoundError.h"
#include "sound/SoundPath.h"
#include "utils/VelmoDspException.h"

namespace velmohost {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kCopyBytes = 1 << 18;

std::unique_ptr<velmodsp::FileReader> Open(const std::string& path) {
    try {
        return std::make_unique<velmodsp::FileReader>(LibraryFile(path));
    } catch (const velmodsp::Exception& cause) {
        throw CannotRead(path, cause.what());
    }
}

std::unique_ptr<velmodsp::FileWriter> Create(const PendingFile& file) {
    try {
        auto writer = std::make_unique<velmodsp::FileWriter>(LibraryFile(file.TemporaryPath()));
        // It opens an unwritable place without complaint.
        if (fs::exists(SystemPath(file.TemporaryPath()))) return writer;
    } catch (const std::exception& cause) {
        throw CannotWrite(file.Path(), cause.what());
    }
    throw CannotWrite(file.Path(), "the file cannot be created");
}

}  // namespace

SoundFileCopy::SoundFileCopy(const std::string& from, const velmodsp::FrameLayout& frames, const std::string& path)
    : sourcePath(from), layout(frames), pending(path), source(Open(from)) {
    pending.CheckRoom(static_cast<std::uintmax_t>(source->GetSize()));
    writer = Create(pending);
    CopyBytes(layout.dataStart);
}

void SoundFileCopy::CopyBytes(std::uint64_t numBytes) {
    for (std::uint64_t left = numBytes; left > 0;) {
        const std::size_t count = ReadBytes(static_cast<std::size_t>(std::min<std::uint64_t>(left, kCopyBytes)));
        if (count == 0) throw CannotRead(sourcePath, "it became shorter meanwhile");
        WriteBytes(count);
        left -= count;
    }
}

std::size_t SoundFileCopy::ReadBytes(std::size_t numBytes) {
    bytes.resize(numBytes);
    const std::int64_t count = source->Read(bytes.data(), numBytes);
    if (count < 0) throw CannotRead(sourcePath, "the read failed");
    return static_cast<std::size_t>(count);
}

void SoundFileCopy::WriteBytes(std::size_t numBytes) {
    if (!writer->Write(bytes.data(), numBytes)) {
        throw CannotWrite(pending.Path(), "not all of it could be written; is the disk full?");
    }
}

unsigned long SoundFileCopy::ReadFrames(unsigned long maxFrames) {
    const auto bytesPerFrame = static_cast<std::size_t>(layout.bytesPerFrame);
    numFrames = static_cast<unsigned long>(std::min<std::uint64_t>(maxFrames, layout.numStoredFrames - nextFrame));
    numStoredBytes = ReadBytes(numFrames * bytesPerFrame);
    if (numStoredBytes + bytesPerFrame <= bytes.size()) throw CannotRead(sourcePath, "it became shorter meanwhile");
    std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(numStoredBytes), bytes.end(), 0);
    nextFrame += numFrames;
    return numFrames;
}

void SoundFileCopy::GetChannels(const std::vector<float*>& channels) const {
    std::vector<int*> words;  // the floats' bits
    words.reserve(channels.size());
    for (float* channel : channels) words.push_back(reinterpret_cast<int*>(channel));
    const auto bytesPerFrame = static_cast<std::size_t>(layout.bytesPerFrame);
    velmodsp::DecodeFrames({layout.sampleFormat, layout.numChannels, bytesPerFrame}, bytes.data(), numFrames,
                           velmodsp::SampleForm::Words, words.data(), 0);
}

void SoundFileCopy::Replace(unsigned channel, unsigned long frame, float value) {
    const std::size_t size = velmodsp::BytesPerSample(layout.sampleFormat);
    const std::size_t offset = frame * static_cast<std::size_t>(layout.bytesPerFrame) + channel * size;
    const int word = std::bit_cast<int>(value);
    const int* const words = &word;
    velmodsp::EncodeFrames({layout.sampleFormat, 1, size}, bytes.data() + offset, 1, velmodsp::SampleForm::Words,
                           &words, 0);
}

void SoundFileCopy::WriteFrames() { WriteBytes(numStoredBytes); }

bool SoundFileCopy::Finish() {
    CopyBytes(static_cast<std::uint64_t>(std::max<std::int64_t>(source->GetSize() - source->GetPosition(), 0)));
    source.reset();  // may be the very file that is replaced
    writer.reset();
    std::error_code error;  // where permissions cannot be set, the samples still count
    const fs::perms permissions = fs::status(SystemPath(sourcePath), error).permissions();
    fs::permissions(SystemPath(pending.TemporaryPath()), permissions, error);
    return pending.Finish();
}

}  // namespace velmohost
