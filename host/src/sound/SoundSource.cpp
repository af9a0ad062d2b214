#include "sound/SoundSource.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "sound/SoundError.h"
#include "sound/SoundPath.h"
#include "utils/VelmoDspException.h"

namespace velmohost {
namespace {

namespace fs = std::filesystem;

std::unique_ptr<velmodsp::AudioFileReader> Open(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status)) throw SoundError("cannot read " + path + ": no such file");
    if (fs::is_directory(status)) throw SoundError("cannot read " + path + ": it is a folder");
    try {
        std::unique_ptr<velmodsp::AudioFileReader> reader(
            velmodsp::AudioFileReader::CreateReaderFor(LibraryFile(path)));
        if (reader) return reader;
    } catch (const std::exception& cause) {
        throw SoundError("cannot read " + path + ": " + cause.what());
    }
    throw SoundError("cannot read " + path + ": not a sound file");
}

/// Frames that the samples of a sound file of `fileBytes` bytes cannot hold, its header being left out of account.
std::uint64_t CountMissingFrames(const velmodsp::AudioFileReader& reader, std::uint64_t fileBytes) {
    const std::uint64_t bitsPerFrame = std::uint64_t{reader.GetBitsPerSample()} * reader.GetNumChannels();
    if (bitsPerFrame < 8) return 0;
    const std::uint64_t framesInFile = fileBytes / (bitsPerFrame / 8);
    return reader.GetLengthInSamples() > framesInFile ? reader.GetLengthInSamples() - framesInFile : 0;
}

}  // namespace

SoundSource::SoundSource(const std::string& soundPath)
    : path(soundPath), reader(Open(soundPath)), block(reader->GetNumChannels(), 0, true) {
    std::error_code error;
    const std::uintmax_t fileBytes = fs::file_size(path, error);
    if (!error) numMissingFrames = CountMissingFrames(*reader, fileBytes);
}

unsigned long SoundSource::ReadBlock(unsigned long maxFrames) {
    const std::uint64_t left = LengthInFrames() - position;
    const auto frames = static_cast<unsigned long>(std::min<std::uint64_t>(left, maxFrames));
    if (frames == 0) return 0;
    try {
        if (frames > block.GetNumSamples()) block.Resize(block.GetNumChannels(), frames);
        if (!reader->ReadSamples(block, 0, frames, position)) throw std::runtime_error("the read failed");
    } catch (const std::exception& cause) {
        throw SoundError("cannot read " + path + ": " + cause.what());
    }
    position += frames;
    return frames;
}

}  // namespace velmohost
