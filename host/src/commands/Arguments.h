#pragma once

#include <string>
#include <vector>

namespace velmohost {

/// The program's arguments in UTF-8, whatever encoding the system hands to `main`.
class Utf8Arguments {
public:
    Utf8Arguments(int argc, char** argv);

    /// How many there are, the program's own name included.
    int Count() const { return static_cast<int>(texts.size()); }
    /// Zero-terminated, and a null pointer behind the last.
    char** Values() { return values.data(); }

private:
    std::vector<std::string> texts;
    std::vector<char*> values;
};

}  // namespace velmohost
