#pragma once

#include <cstddef>
#include <string>

namespace velmohost {

/// Columns that a terminal is taken to have.
inline constexpr std::size_t kTerminalColumns = 80;

/// Columns that a UTF-8 text takes.
std::size_t CountColumns(const std::string& text);

/// `text` broken at blanks into lines of `kTerminalColumns` at most. The first line follows `start`, filled up with
/// blanks to the column `indent`, or stands on a line of its own when `start` is too long for that; every other line
/// begins with `indent` blanks. Blanks and line breaks in `text` count as one blank each run. Ends in a line break;
/// `start` alone when `text` is empty, and nothing at all when both are.
std::string LayOut(const std::string& start, std::size_t indent, const std::string& text);

/// The same for each line of `text` in turn: its line breaks stay, and only the first line follows `start`.
std::string LayOutLines(const std::string& start, std::size_t indent, const std::string& text);

/// The plain text of a description in the markup of the host's reference pages: runs of blanks and line breaks count as
/// one blank, tags are dropped, "<br/>" becomes a line break, and the five entities become their characters.
std::string StripMarkup(const std::string& text);

}  // namespace velmohost
