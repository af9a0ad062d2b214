#include "audiofiles/VelmoDspPlatformFileReader.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "files/VelmoDspFile.h"

namespace velmodsp {
namespace {

struct KindTexts {
    const char* name;
    const char* extension;  // null: there are many
};

KindTexts TextsOf(SoundFileKind kind) {
    switch (kind) {
        case SoundFileKind::Mp3:
            return {AudioFilesManager::Mp3Format, ".mp3"};
        case SoundFileKind::Flac:
            return {"FLAC File", ".flac"};
        case SoundFileKind::Vorbis:
            return {"Ogg Vorbis File", ".ogg"};
        case SoundFileKind::Opus:
            return {"Ogg Opus File", ".opus"};
        case SoundFileKind::Caf:
            return {"CAF File", ".caf"};
        case SoundFileKind::Mpeg4:
            return {"MPEG-4 File", ".m4a"};
        case SoundFileKind::Other:
            break;
    }
    return {"Audio File", nullptr};
}

void FillWithSilence(int* words, unsigned long long first, unsigned long long end) noexcept {
    if (words != nullptr) std::memset(words + first, 0, static_cast<std::size_t>(end - first) * sizeof(int));
}

}  // namespace

std::unique_ptr<PlatformFileReader> PlatformFileReader::CreateReaderFor(const File& file) {
    std::unique_ptr<SystemSoundFile> sound = SystemSoundFile::Open(file);
    if (sound == nullptr) return nullptr;
    return std::unique_ptr<PlatformFileReader>(new PlatformFileReader(file, std::move(sound)));
}

PlatformFileReader::PlatformFileReader(const File& file, std::unique_ptr<SystemSoundFile> opened)
    : AudioFileReader(file),
      extension(file.GetFileExtension()),
      sound(std::move(opened)),
      history(sound->GetFormat().numChannels) {
    const SystemSoundFormat& format = sound->GetFormat();
    sampleRate = format.sampleRate;
    bitsPerSample = format.bitsPerSample;
    numChannels = format.numChannels;
    usesFloatingPointData = format.usesFloatingPointData;
    if (!SeemsValid()) return;

    lengthInSamples = format.numFrames ? *format.numFrames : CountFrames();
    numStoredSamples = lengthInSamples;
    // A look at the last frame tells whether the file was cut short, where it costs no decoding of all the others.
    if (format.seeksExactly && lengthInSamples > 0 && !Reach(lengthInSamples - 1))
        numStoredSamples = std::min(lengthInSamples, CountFrames());
}

String PlatformFileReader::GetFormat() const { return TextsOf(sound->GetFormat().kind).name; }

String PlatformFileReader::GetDefaultFileExtensionForThisFormat() const {
    const char* const usual = TextsOf(sound->GetFormat().kind).extension;
    return usual != nullptr ? String(usual) : extension;
}

bool PlatformFileReader::readSamples(int** destChannels, unsigned long long numSamples,
                                     unsigned long long startSample) {
    unsigned long long done = 0;
    while (done < numSamples && startSample < numStoredSamples && done < numStoredSamples - startSample) {
        const unsigned long long frame = startSample + done;
        if (!Reach(frame)) break;
        done += history.CopyTo(destChannels, done, frame, std::min(numSamples - done, numStoredSamples - frame));
    }
    for (unsigned int k = 0; k < numChannels; ++k) FillWithSilence(destChannels[k], done, numSamples);
    for (int** extra = destChannels + numChannels; *extra != nullptr; ++extra) FillWithSilence(*extra, 0, numSamples);
    return true;
}

/// Frames that the decoder gives from the first one to its end.
unsigned long long PlatformFileReader::CountFrames() {
    if (!sound->Rewind()) return 0;
    history.StartAt(0);
    while (DecodeSome()) {
    }
    return history.GetEnd();
}

/// Has the frame in the history. @return false when the decoder ends before it
bool PlatformFileReader::Reach(unsigned long long frame) {
    if (!history.Holds(frame)) GoNear(frame);
    while (history.IsBefore(frame))
        if (!DecodeSome()) {
            numStoredSamples = std::min(numStoredSamples, history.GetEnd());
            return false;
        }
    return history.Holds(frame);
}

/// Moves the decoder, where it must, to the frame or to the first one.
void PlatformFileReader::GoNear(unsigned long long frame) {
    if (frame == history.GetEnd()) return;
    const bool seeks = sound->GetFormat().seeksExactly;
    if (seeks && sound->SeekTo(frame)) return history.StartAt(frame);
    if (seeks || frame < history.GetEnd()) {
        sound->Rewind();
        history.StartAt(0);
    }
}

bool PlatformFileReader::DecodeSome() {
    const FrameHistory::Room room = history.MakeRoom();
    const std::size_t numFrames = sound->Read(room.words, room.numFrames);
    history.Append(numFrames);
    return numFrames > 0;
}

}  // namespace velmodsp
