#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/FileBytes.h"

/// A page under docs/, and what is compared with it.
namespace guide {

using Lines = std::vector<std::string>;

inline const std::string projectDirectory = VELMO_PROJECT_DIR;

inline Lines LinesOf(const std::string& text) {
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line.substr(0, line.find_last_not_of(' ') + 1));
    return lines;
}

inline std::string Joined(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

/// A page's blocks of code in a language, without blanks at the ends of lines.
inline std::vector<std::string> Blocks(const std::string& page, const std::string& language) {
    std::vector<std::string> blocks;
    bool inside = false;
    for (const std::string& line : LinesOf(ReadBytes(projectDirectory + "/docs/" + page))) {
        if (line == "```") {
            inside = false;
        } else if (line == "```" + language) {
            inside = true;
            blocks.emplace_back();
        } else if (inside) {
            blocks.back() += line + "\n";
        }
    }
    return blocks;
}

/// A command that a page shows after "$ ", and the lines that it prints there.
using Command = std::pair<std::string, Lines>;

/// The commands of a page's blocks of text.
inline std::vector<Command> Commands(const std::string& page) {
    std::vector<Command> commands;
    for (const std::string& block : Blocks(page, "text")) {
        for (const std::string& line : LinesOf(block)) {
            if (line.starts_with("$ ")) {
                commands.push_back({line.substr(2), {}});
            } else {
                if (commands.empty()) throw std::runtime_error("no command before: " + line);
                commands.back().second.push_back(line);
            }
        }
    }
    return commands;
}

/// Every snippet of the page, at least so many, is to be found line by line in a file of the folder.
inline void ExpectCodeOfTheExamples(const std::string& page, const std::string& folder, std::size_t atLeast) {
    std::string sources;
    for (const auto& entry : std::filesystem::directory_iterator(projectDirectory + "/" + folder))
        sources += "\n" + Joined(LinesOf(ReadBytes(entry.path().string())));
    const std::vector<std::string> snippets = Blocks(page, "cpp");
    EXPECT_GE(snippets.size(), atLeast);
    for (const std::string& snippet : snippets)
        EXPECT_NE(sources.find("\n" + snippet), std::string::npos) << "in no example:\n" << snippet;
}

}  // namespace guide
