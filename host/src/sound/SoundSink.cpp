#include "sound/SoundSink.h"

#include <algorithm>
#include <filesystem>
#include <limits>

#include "audiofiles/VelmoDspAiffFileReader.h"
#include "audiofiles/VelmoDspWavFileReader.h"
#include "core/PathText.h"
#include "sound/SoundError.h"
#include "sound/SoundPath.h"
#include "utils/VelmoDspException.h"

namespace velmohost {
namespace {

namespace fs = std::filesystem;

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

std::uint64_t NumBytes(const SoundSink::Format& format) {
    const std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    return format.numFrames > most / BytesPerFrame(format) ? most : format.numFrames * BytesPerFrame(format);
}

std::unique_ptr<velmodsp::AudioFileWriter> CreateWriter(const SoundSink::Format& format, const std::string& path) {
    try {
        std::unique_ptr<velmodsp::AudioFileWriter> writer(velmodsp::AudioFileWriter::CreateWriterFor(
            LibraryFile(path), format.samplerate, format.numChannels, format.bitsPerSample, false));
        // The writer itself opens an unwritable place without complaint, and fails at the first sample.
        if (writer && fs::exists(SystemPath(path))) return writer;
    } catch (const std::exception& cause) {
        throw CannotWrite(format.path, cause.what());
    }
    throw CannotWrite(format.path, "the file cannot be created");
}

}  // namespace

SoundSink::SoundSink(const Format& format, unsigned long blockFrames)
    : file(format.path), block(format.numChannels, blockFrames, true) {
    CheckFormat(format);
    file.CheckRoom(NumBytes(format));
    writer = CreateWriter(format, file.TemporaryPath());
}

void SoundSink::WriteBlock(unsigned long numFrames) {
    if (!writer->WriteSamples(block, 0, numFrames)) throw NotAllFits();
}

bool SoundSink::Finish() {
    if (!writer->Finish()) throw NotAllFits();
    writer.reset();
    return file.Finish();
}

SoundError SoundSink::NotAllFits() const { return CannotWrite(file.Path(), "not all samples fit; is the disk full?"); }

}  // namespace velmohost
