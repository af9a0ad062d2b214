#pragma once

#include <gmock/gmock.h>

#include <regex>
#include <string>

namespace velmotest {

/// Whether a text has a part of the form of a regular expression. As `testing::ContainsRegex`, which knows only the
/// simplest ones on some systems.
MATCHER_P(ContainsPattern, expression, "contains " + std::string(expression)) {
    return std::regex_search(std::string(arg), std::regex(expression));
}

}  // namespace velmotest
