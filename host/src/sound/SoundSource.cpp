#include "sound/SoundSource.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include "core/PathText.h"
#include "sound/SoundError.h"
#include "sound/SoundPath.h"
#include "utils/VelmoDspException.h"

namespace velmohost {
namespace {

namespace fs = std::filesystem;

std::unique_ptr<velmodsp::AudioFileReader> Open(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(SystemPath(path), error);
    if (!fs::exists(status)) throw CannotRead(path, "no such file");
    if (fs::is_directory(status)) throw CannotRead(path, "it is a folder");
    if (!std::ifstream(SystemPath(path))) throw CannotRead(path, "it cannot be opened; may it be read?");
    try {
        std::unique_ptr<velmodsp::AudioFileReader> reader(
            velmodsp::AudioFileReader::CreateReaderFor(LibraryFile(path)));
        if (reader) return reader;
    } catch (const std::exception& cause) {
        throw CannotRead(path, cause.what());
    }
    throw CannotRead(path, "not a sound file");
}

/// Programs that write to a pipe cannot know how long a sound will be, and put the largest length there is into the
/// header: 2 GB less a little, 4 GB, or more in 64 bits. Where the file does not back such a length, it has none.
bool IsLengthUnknown(const velmodsp::AudioFileReader& reader) {
    constexpr std::uint64_t kLargestKnownBytes = 0x7FFF0000;
    const std::uint64_t bitsPerFrame = std::uint64_t{reader.GetBitsPerSample()} * reader.GetNumChannels();
    return reader.GetLengthInSamples() > reader.GetNumStoredSamples() &&
           reader.GetLengthInSamples() >= kLargestKnownBytes / std::max<std::uint64_t>(bitsPerFrame / 8, 1);
}

/// Whether a file of plain frames holds them in a way that has no conversion; it would read as silence.
bool HasUnknownEncoding(const velmodsp::AudioFileReader& reader) {
    const velmodsp::String format = reader.GetFormat();
    if (format != velmodsp::AudioFilesManager::WavFormat && format != velmodsp::AudioFilesManager::AiffFormat) {
        return false;
    }
    const velmodsp::FrameLayout& layout = reader.GetFrameLayout();
    return layout.sampleFormat == velmodsp::SampleFormat::None || layout.bytesPerFrame == 0;
}

}  // namespace

SoundSource::SoundSource(const std::string& soundPath)
    : path(soundPath),
      reader(Open(soundPath)),
      lengthInFrames(IsLengthUnknown(*reader) ? reader->GetNumStoredSamples() : reader->GetLengthInSamples()),
      numMissingAtFirst(NumMissingFrames()),
      block(reader->GetNumChannels(), 0, true) {}

void SoundSource::RequireKnownEncoding() const {
    if (!HasUnknownEncoding(*reader)) return;
    throw CannotRead(path, "its samples (" + std::to_string(reader->GetBitsPerSample()) +
                               " bits) are in an encoding that is not known here");
}

std::uint64_t SoundSource::NumMissingFrames() const {
    const std::uint64_t numStored = reader->GetNumStoredSamples();
    return lengthInFrames > numStored ? lengthInFrames - numStored : 0;
}

unsigned long SoundSource::ReadBlock(unsigned long maxFrames) {
    const std::uint64_t left = lengthInFrames - position;
    const auto frames = static_cast<unsigned long>(std::min<std::uint64_t>(left, maxFrames));
    if (frames == 0) return 0;
    try {
        if (frames > block.GetNumSamples()) block.Resize(block.GetNumChannels(), frames);
        if (!reader->ReadSamples(block, 0, frames, position)) throw std::runtime_error("the read failed");
    } catch (const std::exception& cause) {
        throw CannotRead(path, cause.what());
    }
    position += frames;
    return frames;
}

}  // namespace velmohost
