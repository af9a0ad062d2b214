#pragma once

#include <string>

namespace velmohost {

/// Tells the user something about velmohost's own work: a line "velmohost: TEXT" on standard error. Main thread.
void PrintNotice(const std::string& text);

/// An amount as English puts it: "1 row", "3 rows".
std::string Count(unsigned long long number, const std::string& thing);

}  // namespace velmohost
