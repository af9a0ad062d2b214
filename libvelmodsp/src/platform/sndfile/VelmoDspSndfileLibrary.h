#pragma once

#include <sndfile.h>

namespace velmodsp {

/// The functions of libsndfile. The library is loaded when the first file asks for it, so programs that read no such
/// file depend on it neither at link time nor when they start: a plug-in for a host must not.
struct SndfileLibrary {
    decltype(&sf_open_fd) openDescriptor;
    decltype(&sf_open_virtual) openVirtual;
    decltype(&sf_close) close;
    decltype(&sf_command) command;
    decltype(&sf_seek) seek;
    decltype(&sf_readf_int) readInts;
    decltype(&sf_readf_float) readFloats;

    /// Null when it is not installed. Any thread.
    static const SndfileLibrary* Get();
};

}  // namespace velmodsp
