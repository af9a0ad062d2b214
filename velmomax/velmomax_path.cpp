#include "platform/VelmoDspPathSyntax.h"

#include "velmomax_path.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <system_error>

#include "velmomax_api.h"

namespace velmomax {

namespace {

/// The characters of Mac OS Roman from byte 0x80 on, sixteen a row; those below are ASCII. The byte 0xF0 is the maker's
/// logo, which has a place in Unicode's area for private use alone.
constexpr std::u16string_view macOsRoman =
    u"ÄÅÇÉÑÖÜáàâäãåçéè"
    u"êëíìîïñóòôöõúùûü"
    u"†°¢£§•¶ß®©™´¨≠ÆØ"
    u"∞±≤≥¥µ∂∑∏π∫ªºΩæø"
    u"¿¡¬√ƒ≈∆«»…\u00A0ÀÃÕŒœ"
    u"–—“”‘’÷◊ÿŸ⁄€‹›ﬁﬂ"
    u"‡·‚„‰ÂÊÁËÈÍÎÏÌÓÔ"
    u"\uF8FFÒÚÛÙıˆ˜¯˘˙˚¸˝˛ˇ";
static_assert(macOsRoman.size() == 128);

/// @param character none of the surrogates
void appendAsUtf8(std::string& text, char16_t character) {
    const auto continuation = [](unsigned int bits) { return static_cast<char>(0x80 | (bits & 0x3F)); };
    const unsigned int code = character;
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0 | (code >> 6));
        text += continuation(code);
    } else {
        text += static_cast<char>(0xE0 | (code >> 12));
        text += continuation(code >> 6);
        text += continuation(code);
    }
}

std::string macOsRomanToUtf8(const std::string& text) {
    std::string utf8;
    for (char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        appendAsUtf8(utf8, byte < 0x80 ? static_cast<char16_t>(byte) : macOsRoman[byte - 0x80u]);
    }
    return utf8;
}

/// Length of the UTF-8 sequence that a byte begins; 0 when none begins with it.
std::size_t sequenceLength(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead < 0xE0) return 2;
    if (lead >= 0xE0 && lead < 0xF0) return 3;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

/// Whether the bytes can be UTF-8. Text in Mac OS Roman with anything beyond ASCII hardly ever can.
bool readsAsUtf8(const std::string& text) {
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = sequenceLength(static_cast<unsigned char>(text[i]));
        if (length == 0 || length > text.size() - i) return false;
        const auto isContinuation = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
        if (!std::all_of(&text[i] + 1, &text[i] + length, isContinuation)) return false;
        i += length;
    }
    return true;
}

std::string withoutVolume(const std::string& path) {
    if (velmodsp::PathRootLength(velmodsp::String(path)) > 0) return path;
    const std::size_t colon = path.find(':');
    return "/Volumes/" + path.substr(0, colon) + path.substr(colon + 1);  // npos + 1 is 0
}

}  // namespace

std::string TranslateAbsolutePath(const std::string& path) { return macOsRomanToUtf8(withoutVolume(path)); }

std::string OpenSaveAsDialogForJSONFile() {
    std::array<char, MAX_FILENAME_CHARS> name{"file.json"};
    short folder = 0;
    t_fourcc chosenType = 0;
    t_fourcc jsonType = 'J' << 24 | 'S' << 16 | 'O' << 8 | 'N';
    if (saveasdialog_extended(name.data(), &folder, &chosenType, &jsonType, 1)) return "";
    std::array<char, MAX_PATH_CHARS> path{};
    if (path_topotentialname(folder, name.data(), path.data(), 0)) return "";
    // Old hosts speak Mac OS Roman here, newer ones UTF-8, which must not be decoded as the other.
    return readsAsUtf8(path.data()) ? withoutVolume(path.data()) : TranslateAbsolutePath(path.data());
}

NewTextFile::NewTextFile(const std::string& path) {
    try {
        file = std::u8string(path.begin(), path.end());
    } catch (const std::filesystem::filesystem_error&) {  // a text that is no path on this system
        return;
    }
    try {
        stream.open(file);
    } catch (...) {  // opened, but without memory for a buffer
        closeAndRemove();
        throw;
    }
}

NewTextFile::~NewTextFile() {
    if (IsOpen()) closeAndRemove();
}

bool NewTextFile::Finish() {
    if (!IsOpen()) return false;
    stream.close();
    if (stream) return true;
    closeAndRemove();
    return false;
}

void NewTextFile::closeAndRemove() noexcept {
    stream.close();
    // A device or a link stays: it was there before.
    std::error_code error;
    if (std::filesystem::is_regular_file(std::filesystem::symlink_status(file, error))) {
        std::filesystem::remove(file, error);
    }
}

}  // namespace velmomax
