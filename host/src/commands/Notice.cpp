#include "commands/Notice.h"

#include <cstdio>

namespace velmohost {

void PrintNotice(const std::string& text) {
    std::fflush(stdout);  // keep the order in which things happened where both go to one place
    std::fprintf(stderr, "velmohost: %s\n", text.c_str());
}

std::string Count(unsigned long long number, const std::string& thing) {
    return std::to_string(number) + " " + thing + (number == 1 ? "" : "s");
}

}  // namespace velmohost
