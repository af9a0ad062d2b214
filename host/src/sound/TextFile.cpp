#include "sound/TextFile.h"

#include "files/VelmoDspFileWriter.h"
#include "sound/PendingFile.h"
#include "sound/SoundError.h"
#include "sound/SoundPath.h"
#include "utils/VelmoDspException.h"

namespace velmohost {
namespace {

bool Write(const std::string& path, const std::string& text) {
    velmodsp::FileWriter writer(LibraryFile(path));
    return writer.Write(text.data(), text.size());
}

}  // namespace

void WriteTextFile(const std::string& path, const std::string& text) {
    PendingFile file(path);
    try {
        if (!Write(file.TemporaryPath(), text)) throw CannotWrite(path, "is the folder writable, the disk full?");
    } catch (const velmodsp::Exception& cause) {
        throw CannotWrite(path, cause.what());
    }
    file.Finish();
}

}  // namespace velmohost
