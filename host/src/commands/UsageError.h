#pragma once

#include <stdexcept>

namespace velmohost {

/// A command line that asks for what cannot be; the text says what is wrong with it.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace velmohost
