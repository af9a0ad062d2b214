#pragma once

#include <string>
#include <vector>

namespace velmohost {

/// Which of `count` inlets or outlets a list such as "1,3-4" or "none" names, counted from 1.
/// @param option the option that the list was given for, as the message names it
/// @throws UsageError when it is no such list or names one past the last
std::vector<bool> ParseChannelList(const std::string& option, const std::string& list, unsigned count);

}  // namespace velmohost
