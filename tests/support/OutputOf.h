#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

/// What a shell command prints on standard output. The test fails when the command does not end with 0.
inline std::string OutputOf(const std::string& command) {
    std::string output;
    FILE* pipe = popen(command.c_str(), "r");
    for (int byte = std::fgetc(pipe); byte != EOF; byte = std::fgetc(pipe)) output += static_cast<char>(byte);
    EXPECT_EQ(pclose(pipe), 0) << command << "\n" << output;
    return output;
}
