#include "core/PathText.h"

namespace velmohost {
namespace {

#ifdef __APPLE__
constexpr bool kVolumesHaveNames = true;
#else
constexpr bool kVolumesHaveNames = false;  // a colon belongs to a drive, or to a file's name
#endif

}  // namespace

std::filesystem::path SystemPath(const std::string& text) { return std::u8string(text.begin(), text.end()); }

std::filesystem::path PathFromText(const std::string& text) {
    return SystemPath(kVolumesHaveNames ? TranslateVolume(text) : text);
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
