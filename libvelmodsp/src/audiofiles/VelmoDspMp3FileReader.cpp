#include "audiofiles/VelmoDspMp3FileReader.h"

#include <utility>

#include "files/VelmoDspFile.h"

namespace velmodsp {

std::unique_ptr<Mp3FileReader> Mp3FileReader::CreateReaderFor(const File& file) {
    if (TryToDetermineFileType(file) != Mp3Format) return nullptr;
    std::unique_ptr<SystemSoundFile> sound = SystemSoundFile::OpenMp3(file);
    if (sound == nullptr) return nullptr;
    return std::unique_ptr<Mp3FileReader>(new Mp3FileReader(file, std::move(sound)));
}

}  // namespace velmodsp
