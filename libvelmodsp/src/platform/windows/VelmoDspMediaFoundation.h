#pragma once

// Before the headers of the service.
#include <windows.h>

#include <mfapi.h>
#include <mfidl.h>
#include <mfreadwrite.h>

namespace velmodsp {

/// The functions of the system's media service. Editions of Windows without media features lack it, so it is loaded
/// when the first file asks for it, and a program starts without it.
struct MediaFoundation {
    decltype(&MFCreateFile) createFile;
    decltype(&MFCreateMediaType) createMediaType;
    decltype(&MFCreateSourceReaderFromByteStream) createSourceReader;

    /// Null when the system lacks it. Any thread; the thread need not have initialised COM.
    static const MediaFoundation* Get();
};

}  // namespace velmodsp
