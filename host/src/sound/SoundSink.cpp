#include "sound/SoundSink.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "audiofiles/VelmoDspAiffFileReader.h"
#include "audiofiles/VelmoDspWavFileReader.h"
#include "sound/SoundError.h"
#include "sound/SoundPath.h"
#include "utils/VelmoDspException.h"

namespace velmohost {
namespace {

namespace fs = std::filesystem;

SoundError CannotWrite(const std::string& path, const std::string& reason) {
    return SoundError("cannot write " + path + ": " + reason);
}

/// Follows links, so that the file behind one is replaced rather than the link.
std::string ResolveLinks(const std::string& path) {
    std::error_code error;
    const fs::path resolved = fs::weakly_canonical(path, error);
    return error ? path : resolved.string();
}

void CheckFinalPath(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::is_directory(status)) throw CannotWrite(path, "it is a folder");
    if (fs::exists(status) && !fs::is_regular_file(status)) throw CannotWrite(path, "it is not a plain file");
}

/// A name of its own beside the final file, with the same extension: "out.wav" gives "out.part.wav".
std::string FindTemporaryPath(const fs::path& path) {
    std::error_code error;
    fs::path candidate;
    for (unsigned number = 1; number == 1 || fs::exists(fs::symlink_status(candidate, error)); ++number) {
        const std::string mark = number == 1 ? ".part" : ".part" + std::to_string(number);
        candidate = path.parent_path() / (path.stem().string() + mark + path.extension().string());
    }
    return candidate.string();
}

std::uint64_t BytesPerFrame(const SoundSink::Format& format) {
    return std::max<std::uint64_t>(std::uint64_t{format.numChannels} * static_cast<unsigned>(format.bitsPerSample) / 8,
                                   1);
}

template <class Reader>
bool HasExtensionOf(const std::string& path) {
    velmodsp::StringArray extensions;
    Reader::GetListOfPossibleExtensions(extensions);
    return LibraryFile(path).HasOneOfTheseExtensions(extensions);
}

void CheckFormat(const SoundSink::Format& format) {
    if (HasExtensionOf<velmodsp::WavFileReader>(format.path)) return;  // turns into its large form by itself
    if (!HasExtensionOf<velmodsp::AiffFileReader>(format.path)) {
        throw CannotWrite(format.path, "only WAV and AIFF files can be written (.wav, .bwf, .aif, .aiff)");
    }
    constexpr std::uint64_t kHeaderBytes = 54, kMaxBytes = 0xFFFFFFFF;  // sizes in the header have 32 bits
    if (format.numFrames > (kMaxBytes - kHeaderBytes) / BytesPerFrame(format)) {
        throw CannotWrite(format.path, "an AIFF file holds 4 GB at most; use .wav");
    }
}

/// Better told at once than after an hour. The disk may still fill up on the way.
void CheckRoom(const SoundSink::Format& format, const fs::path& path) {
    std::error_code error;
    const fs::space_info space = fs::space(path.parent_path(), error);
    if (error) return;  // the folder is yet to be made, or its system does not tell
    if (format.numFrames > space.available / BytesPerFrame(format)) {
        throw CannotWrite(format.path, "its " + std::to_string(format.numFrames) + " frames of " +
                                           std::to_string(BytesPerFrame(format)) + " bytes do not fit on the disk");
    }
}

std::unique_ptr<velmodsp::AudioFileWriter> CreateWriter(const SoundSink::Format& format, const std::string& path) {
    try {
        std::unique_ptr<velmodsp::AudioFileWriter> writer(velmodsp::AudioFileWriter::CreateWriterFor(
            LibraryFile(path), format.samplerate, format.numChannels, format.bitsPerSample, false));
        // The writer itself opens an unwritable place without complaint, and fails at the first sample.
        if (writer && fs::exists(path)) return writer;
    } catch (const std::exception& cause) {
        throw CannotWrite(format.path, cause.what());
    }
    throw CannotWrite(format.path, "the file cannot be created");
}

}  // namespace

SoundSink::SoundSink(const Format& format, unsigned long blockFrames)
    : path(ResolveLinks(format.path)),
      temporaryPath(FindTemporaryPath(path)),
      block(format.numChannels, blockFrames, true) {
    CheckFinalPath(path);
    CheckFormat(format);
    CheckRoom(format, path);
    writer = CreateWriter(format, temporaryPath);
}

SoundSink::~SoundSink() {
    if (!writer) return;
    writer.reset();
    std::error_code error;
    fs::remove(temporaryPath, error);
}

void SoundSink::WriteBlock(unsigned long numFrames) {
    if (!writer->WriteSamples(block, 0, numFrames)) throw CannotWrite(path, "not all samples fit; is the disk full?");
}

bool SoundSink::Finish() {
    writer.reset();  // completes the file
    try {
        const bool replaces = fs::exists(path);
        LibraryFile(path).OverwriteIfNeeded(true);
        fs::rename(temporaryPath, path);
        return replaces;
    } catch (const std::exception& cause) {
        throw CannotWrite(path, std::string(cause.what()) + "; the new sound is in " + temporaryPath);
    }
}

}  // namespace velmohost
