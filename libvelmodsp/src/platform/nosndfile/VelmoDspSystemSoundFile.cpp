#include "platform/VelmoDspSystemSoundFile.h"

// A system without a service that decodes sound files: only what the library reads by itself can be read.

namespace velmodsp {

std::unique_ptr<SystemSoundFile> SystemSoundFile::Open(const File&) { return nullptr; }

std::unique_ptr<SystemSoundFile> SystemSoundFile::OpenMp3(const File&) { return nullptr; }

}  // namespace velmodsp
