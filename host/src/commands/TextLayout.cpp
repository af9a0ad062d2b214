#include "commands/TextLayout.h"

#include <algorithm>
#include <sstream>

namespace velmohost {
namespace {

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

/// Adds a character of flowing text, where a run of blanks and line breaks counts as one blank.
void AppendFlowing(std::string& text, char c) {
    const bool isBlank = c == ' ' || c == '\t' || c == '\n' || c == '\r';
    const bool followsBlank = text.empty() || text.back() == ' ' || text.back() == '\n';
    if (!isBlank) {
        text += c;
    } else if (!followsBlank) {
        text += ' ';
    }
}

void BreakLine(std::string& text) {
    while (!text.empty() && text.back() == ' ') text.pop_back();
    text += '\n';
}

}  // namespace

std::size_t CountColumns(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string LayOut(const std::string& start, std::size_t indent, const std::string& text) {
    std::istringstream words(text);
    words.exceptions(std::ios::badbit);  // or a lack of memory would pass for the end
    std::string result = start, word;
    std::size_t column = CountColumns(start);
    bool lineIsEmpty = true;
    while (words >> word) {
        const bool fits = lineIsEmpty ? column <= indent : column + 1 + CountColumns(word) <= kTerminalColumns;
        if (!fits) {
            result += '\n';
            column = 0;
            lineIsEmpty = true;
        }
        const std::size_t numBlanks = lineIsEmpty ? indent - column : 1;
        result += std::string(numBlanks, ' ') + word;
        column += numBlanks + CountColumns(word);
        lineIsEmpty = false;
    }
    return result.empty() ? result : result + '\n';
}

std::string LayOutLines(const std::string& start, std::size_t indent, const std::string& text) {
    std::istringstream lines(text);
    lines.exceptions(std::ios::badbit);  // or a lack of memory would pass for the end
    std::string line, result;
    std::getline(lines, line);
    result = LayOut(start, indent, line);
    while (std::getline(lines, line)) result += LayOut("", indent, line);
    return result;
}

std::string StripMarkup(const std::string& text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text[at] == '<' ? text.find('>', at) : std::string::npos;
        if (end == std::string::npos) {
            AppendFlowing(plain, text[at++]);
            continue;
        }
        if (text.compare(at, 3, "<br") == 0) BreakLine(plain);
        at = end + 1;
    }
    while (!plain.empty() && plain.back() == ' ') plain.pop_back();
    for (const auto& [entity, character] : {std::pair("&lt;", "<"), std::pair("&gt;", ">"), std::pair("&quot;", "\""),
                                            std::pair("&apos;", "'"), std::pair("&amp;", "&")}) {
        ReplaceAll(plain, entity, character);
    }
    return plain;
}

}  // namespace velmohost
