#pragma once

#include <stdexcept>
#include <string>

namespace velmohost {

/// A file that cannot be read or written; the text names the file and the reason.
class SoundError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

inline SoundError CannotRead(const std::string& path, const std::string& reason) {
    return SoundError("cannot read " + path + ": " + reason);
}

inline SoundError CannotWrite(const std::string& path, const std::string& reason) {
    return SoundError("cannot write " + path + ": " + reason);
}

}  // namespace velmohost
