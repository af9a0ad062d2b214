#include "audiofiles/VelmoDspAudioFilesManager.h"

#include <cstring>
#include <exception>

#include "audiofiles/VelmoDspAiffFileReader.h"
#include "audiofiles/VelmoDspWavFileReader.h"
#include "files/VelmoDspFile.h"
#include "files/VelmoDspFileReader.h"
#include "text/VelmoDspStringArray.h"

namespace velmodsp {
namespace {

String TypeByExtension(const File& file) {
    StringArray extensions;
    AiffFileReader::GetListOfPossibleExtensions(extensions);
    if (file.HasOneOfTheseExtensions(extensions)) return AudioFilesManager::AiffFormat;
    WavFileReader::GetListOfPossibleExtensions(extensions);
    if (file.HasOneOfTheseExtensions(extensions)) return AudioFilesManager::WavFormat;
    if (file.HasFileExtension(".mp3")) return AudioFilesManager::Mp3Format;
    return AudioFilesManager::UnknownFormat;
}

}  // namespace

String AudioFilesManager::TryToDetermineFileType(const File& file) {
    // A missing file is no failure here, so it is not left to the exception of the byte reader, which would be logged.
    if (!file.ExistsAsFile()) return UnknownFormat;
    try {
        char id[4] = {};
        FileReader(file).Read(id, sizeof id);
        if (std::memcmp(id, "RIFF", 4) == 0 || std::memcmp(id, "RF64", 4) == 0) return WavFormat;
        if (std::memcmp(id, "FORM", 4) == 0) return AiffFormat;
    } catch (const std::exception&) {
        return UnknownFormat;
    }
    return TypeByExtension(file);
}

}  // namespace velmodsp
