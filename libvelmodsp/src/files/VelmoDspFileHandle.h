#pragma once

#include "files/VelmoDspFile.h"

namespace velmodsp {

/// Opens files as raw descriptors of the system, which the caller owns and closes.
class FileHandle {
public:
    /// @throws Exception when the file cannot be opened; likewise `OpenFileForWriting`
    static int OpenFileForReading(const File& file);
    /// Opens for reading and writing at the start; a missing file is created. An existing file keeps its bytes, those
    /// beyond the ones that get written included: `File::OverwriteIfNeeded` clears the way first.
    static int OpenFileForWriting(const File& file);
};

}  // namespace velmodsp
