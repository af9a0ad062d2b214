#pragma once

#include "audiofiles/VelmoDspPlatformFileReader.h"

namespace velmodsp {

/// Reads MP3 files, and MPEG audio of the layers 1 and 2 under the same extension. Silence that the encoder put around
/// the sound is left out where the file tells of it.
class Mp3FileReader : public PlatformFileReader {
public:
    /// @return null when the file is no MP3 file by its type (see `TryToDetermineFileType`) or holds no MPEG audio, or
    /// the system cannot decode it
    static std::unique_ptr<Mp3FileReader> CreateReaderFor(const File& file);

    String GetFormat() const override { return Mp3Format; }
    String GetDefaultFileExtensionForThisFormat() const override { return ".mp3"; }

private:
    using PlatformFileReader::PlatformFileReader;
};

}  // namespace velmodsp
