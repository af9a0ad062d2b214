#include "commands/ChannelList.h"

#include <algorithm>
#include <charconv>
#include <sstream>

#include "commands/UsageError.h"

namespace velmohost {
namespace {

/// Reads the whole of `text` as a number from 1 on; 0 when it is none.
unsigned ParseNumber(const std::string& text) {
    unsigned number = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end ? number : 0;
}

}  // namespace

std::vector<bool> ParseChannelList(const std::string& option, const std::string& list, unsigned count) {
    std::vector<bool> named(count, false);
    if (list == "none") return named;
    std::istringstream items(list + ",");
    items.exceptions(std::ios::badbit);  // or a lack of memory would pass for the end
    for (std::string item; std::getline(items, item, ',');) {
        const std::size_t dash = item.find('-');
        const unsigned first = ParseNumber(item.substr(0, dash));
        const unsigned last = dash == std::string::npos ? first : ParseNumber(item.substr(dash + 1));
        if (first == 0 || last < first) {
            throw UsageError(option + " takes a list such as 1,3-4 or none, but got \"" + list + "\"");
        }
        if (last > count) {
            throw UsageError(option + " names number " + std::to_string(last) + ", but the last one is " +
                             std::to_string(count));
        }
        std::fill(named.begin() + (first - 1), named.begin() + last, true);
    }
    return named;
}

}  // namespace velmohost
