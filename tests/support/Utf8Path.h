#pragma once

#include <filesystem>
#include <string>

/// The path for a UTF-8 text, on systems too that read plain text in another encoding.
inline std::filesystem::path Utf8Path(const std::string& text) { return std::u8string(text.begin(), text.end()); }

/// The path in the library's form: UTF-8 with "/" as separator.
inline std::string Utf8Text(const std::filesystem::path& path) {
    const std::u8string text = path.generic_u8string();
    return {text.begin(), text.end()};
}
