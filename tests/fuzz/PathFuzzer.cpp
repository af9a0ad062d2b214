// Paths of any bytes but the zero at which a path ends: what File makes of them keeps the laws of paths. Nothing here
// touches the file system.

#include <pwd.h>
#include <unistd.h>

#include <algorithm>

#include "Fuzzing.h"
#include "files/VelmoDspFile.h"

using velmodsp::File;
using velmodsp::String;

namespace {

constexpr const char* kHome = "/home/some one";
constexpr const char* kWorkingDirectory = "/usr";
constexpr const char* kSpaces = " \t\n\v\f\r";

std::string Trimmed(const std::string& text) {
    const std::size_t start = text.find_first_not_of(kSpaces);
    return start == std::string::npos ? "" : text.substr(start, text.find_last_not_of(kSpaces) + 1 - start);
}

/// Without the backslashes that stand before a blank.
std::string Unescaped(const std::string& text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size() || text[i + 1] != ' ') plain += text[i];
    }
    return plain;
}

/// The home directory of "~name/..."; of nobody, nothing.
std::string HomeOf(const std::string& path) {
    const std::string name = path.substr(1, path.find('/') - 1);
    const passwd* const user = getpwnam(name.c_str());
    return user != nullptr ? user->pw_dir : "";
}

/// An absolute path written in its full form.
void CheckAbsolutePath(const std::string& typed, const std::string& path) {
    if (typed.empty()) return Require(path.empty(), "an empty path stays empty");
    const std::string plain = Unescaped(Trimmed(typed));
    if (plain.starts_with('~') && plain.size() > 1 && plain[1] != '/') {
        const std::string home = HomeOf(plain);
        return Require(home.empty() ? path.starts_with('~') : path.starts_with(home), "the user's home directory");
    }
    Require(path.starts_with('/'), "a path is absolute");
    Require(path == "/" || !path.ends_with('/'), "no separator at the end");
    if (plain.starts_with('/')) Require(plain.starts_with(path), "an absolute path stays what it is");
    if (plain.starts_with('~')) Require(path.starts_with(kHome), "the home directory comes first");
    if (plain.find_first_of("/~.") != 0) {
        Require(String(path) == File::parseAbsolutePath(String(kWorkingDirectory + ("/" + plain))),
                "the working directory comes first");
    }
    const bool staysAsItIs = Trimmed(path) == path && Unescaped(path) == path;
    if (staysAsItIs) Require(File(String(path)).GetFullPathName() == String(path), "an absolute path is final");
}

void CheckParts(const File& file) {
    const std::string path = file.GetFullPathName().Str();
    const std::string parent = file.GetParentDirectory().Str();
    const std::string name = file.GetFileName().Str();
    const std::string extension = file.GetFileExtension().Str();
    Require(name.find('/') == std::string::npos, "a name has no separator");
    const std::size_t separator = path.rfind('/');
    Require(path.ends_with(name) && name.size() == path.size() - separator - 1,
            "the name is what follows the separator");
    const std::string before = path.substr(0, separator == 0 ? 1 : separator);
    Require(parent == before, "the folder is what precedes the separator, or the root");
    const std::size_t dot = name.rfind('.');
    Require(extension == (dot == std::string::npos ? "" : name.substr(dot)), "the extension begins at the last point");

    Require(file.HasFileExtension(String()) == extension.empty(), "no extension");
    if (extension.size() < 2 || extension.find(' ') != std::string::npos) return;  // no word of a list
    String upper(extension);
    upper.MakeUpperCase();
    Require(file.HasFileExtension(String(extension)) && file.HasFileExtension(upper), "its own extension");
    Require(file.HasFileExtension(String("wav ") + String(extension.substr(1))), "one of several extensions");
    Require(!file.HasFileExtension(String(extension + "x")), "another extension");
}

/// "./" and "../" at the beginning, taken one by one.
std::string Below(std::string folder, std::string child) {
    for (;;) {
        if (child.starts_with("./")) {
            child.erase(0, 2);
        } else if (child == ".." || child.starts_with("../")) {
            child.erase(0, 3);
            folder.erase(std::min(folder.rfind('/'), folder.size()));
        } else {
            return File::parseAbsolutePath(String(folder.ends_with('/') ? folder + child : folder + "/" + child)).Str();
        }
    }
}

void CheckChild(const File& folder, const std::string& child) {
    const std::string found = folder.GetChildFile(String(child)).Str();
    const bool isAbsolute = child.starts_with('/') || child.starts_with('~');
    const std::string path = folder.GetFullPathName().Str();
    if (!isAbsolute && !path.starts_with('/')) return;  // below nothing that is known
    Require(found == (isAbsolute ? File::parseAbsolutePath(String(child)).Str() : Below(path, child)),
            "a relative path is seen from the folder");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    setenv("HOME", kHome, 1);
    return chdir(kWorkingDirectory);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    std::vector<std::string> lines = TakeLines(input);
    if (lines.empty()) return 0;
    for (std::string& line : lines) std::erase(line, '\0');
    const File file((String(lines[0])));
    CheckAbsolutePath(lines[0], file.GetFullPathName().Str());
    CheckParts(file);
    for (std::size_t i = 1; i < lines.size(); ++i) CheckChild(file, lines[i]);
    return 0;
}
