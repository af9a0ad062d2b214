#pragma once

#include <stdexcept>

namespace velmohost {

/// A sound file that cannot be read or written; the text names the file and the reason.
class SoundError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace velmohost
