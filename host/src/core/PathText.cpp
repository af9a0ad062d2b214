#include "core/PathText.h"

namespace velmohost {
namespace {

#ifdef __APPLE__
constexpr bool kVolumesHaveNames = true;
#else
constexpr bool kVolumesHaveNames = false;  // a colon belongs to a drive, or to a file's name
#endif

}  // namespace

std::filesystem::path PathFromText(const std::string& text) {
    const std::string translated = kVolumesHaveNames ? TranslateVolume(text) : text;
    // By way of char8_t, since a path of plain char is read in the system's code page on Windows.
    return std::filesystem::path(std::u8string(translated.begin(), translated.end()));
}

std::string TextFromPath(const std::filesystem::path& path) {
    const std::u8string text = path.generic_u8string();
    return {text.begin(), text.end()};
}

std::string TranslateVolume(const std::string& text) {
    const std::size_t mark = text.find(':');
    if (mark == std::string::npos || mark == 0 || text.find('/') != mark + 1) return text;
    return "/Volumes/" + text.substr(0, mark) + text.substr(mark + 1);
}

}  // namespace velmohost
