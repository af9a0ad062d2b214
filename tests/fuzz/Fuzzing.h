#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "support/TempFolder.h"

// What the fuzzers share: how they say that something is wrong, and how they take their inputs apart.

/// Ends the program, as a finding of the fuzzer, unless the promise is kept.
inline void Require(bool isKept, const char* promise) {
    if (isKept) return;
    std::fprintf(stderr, "broken promise: %s\n", promise);
    std::abort();
}

/// The rest of the input as lines of text; the last one may lack its end.
inline std::vector<std::string> TakeLines(FuzzedDataProvider& input) {
    const std::string text = input.ConsumeRemainingBytesAsString();
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

/// A folder for the files of all inputs; it goes away with the program.
inline const TempFolder& Workplace() {
    static const TempFolder folder;
    return folder;
}

inline void WriteFile(const std::string& path, const std::vector<std::uint8_t>& bytes) {
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    Require(
        file != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() && std::fclose(file) == 0,
        "the workplace takes files");
}

inline std::string ReadFile(const std::string& path) {
    std::string bytes;
    if (std::FILE* const file = std::fopen(path.c_str(), "rb")) {
        char part[4096];
        for (std::size_t n; (n = std::fread(part, 1, sizeof part, file)) > 0;) bytes.append(part, n);
        std::fclose(file);
    }
    return bytes;
}
