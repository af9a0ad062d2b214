#include "files/VelmoDspFile.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/FileBytes.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"
#include "utils/VelmoDspException.h"

namespace velmodsp {
namespace {

namespace fs = std::filesystem;

String Parsed(const char* path) { return File::parseAbsolutePath(path); }

/// The system's path in the library's form.
String Text(const fs::path& path) { return String(Utf8Text(path)); }

TEST(File, MakesPathsAbsoluteAndNormal) {
#ifndef _WIN32  // where upper and lower case are one variable
    const ScopedVariable otherHome("home", "/other");
#endif
    const ScopedVariable home("HOME", "/home/user/");
    const String cwd = Text(fs::current_path());
    const std::pair<const char*, String> rows[] = {{"", ""},
                                                   {"//", "/"},
                                                   {"/tmp///", "/tmp"},
                                                   {"  ~/a/b/ ", "/home/user/a/b"},
                                                   {"~", "/home/user"},
                                                   {"~no-such-user/x/", "~no-such-user/x"},
                                                   {"a\\ b", cwd + "/a b"},
#ifndef _WIN32  // where a backslash is a separator
                                                   {"/a\\\\ b", "/a\\ b"},
                                                   {"/a\\b", "/a\\b"},
#endif
                                                   {"../x", Text(fs::current_path().parent_path()) + "/x"},
                                                   {".hidden", cwd + "/.hidden"},
                                                   {".", cwd + "/."},
                                                   {" ", cwd}};
    for (const auto& [path, expected] : rows) EXPECT_EQ(Parsed(path), expected) << path;
}

TEST(File, FindsTheHomeDirectoryInTheEnvironment) {
    const auto homeWith = [](std::optional<std::string> upper, std::optional<std::string> lower) {
        const ScopedVariable otherHome("home", lower);
        const ScopedVariable home("HOME", upper);
        return File::GetUserHomeDirectory();
    };
    const String cwd = File::GetCurrentWorkingDirectory();
    EXPECT_EQ(homeWith("/upper/", "/lower"), "/upper");
    EXPECT_EQ(homeWith("rel", std::nullopt), cwd + "/rel");
#ifdef _WIN32
    const String profile = Text(fs::path(_wgetenv(L"USERPROFILE")));
    EXPECT_EQ(homeWith(std::nullopt, std::nullopt), profile);
    EXPECT_EQ(Parsed("~Public/x"), profile.UpToLastOccurrenceOf("/", true, false) + "Public/x");
#else
    EXPECT_EQ(homeWith(std::nullopt, "/lower"), "/lower");
    EXPECT_EQ(homeWith(std::nullopt, std::nullopt), cwd);
    for (const char* selfReferring : {"~", " ~/x"}) EXPECT_EQ(homeWith(selfReferring, "~"), cwd) << selfReferring;
    EXPECT_EQ(Parsed("~root/x"), "/root/x") << "root's home directory comes from the password database";
#endif
}

TEST(File, TellsThePartsOfAPath) {
    const struct {
        const char *path, *name, *extension, *parent;
    } rows[] = {{"/a/c.TXT", "c.TXT", ".TXT", "/a"},
                {"/a.b/c", "c", "", "/a.b"},
                {"/a", "a", "", "/"},
                {"/a.tar.gz", "a.tar.gz", ".gz", "/"},
                {"/", "", "", "/"},
                {"~nobody-known", "~nobody-known", "", "~nobody-known"}};
    for (const auto& row : rows) {
        const File file(row.path);
        EXPECT_EQ(file.GetFileName(), row.name) << row.path;
        EXPECT_EQ(file.GetFileExtension(), row.extension) << row.path;
        EXPECT_EQ(file.GetParentDirectory(), row.parent) << row.path;
    }
}

TEST(File, ResolvesChildren) {
    const File folder("/a/b");
    EXPECT_EQ(folder.GetChildFile("c/d/"), "/a/b/c/d");
    EXPECT_EQ(folder.GetChildFile(".././../../x"), "/x");
    EXPECT_EQ(folder.GetChildFile(".."), "/a");
    EXPECT_EQ(folder.GetChildFile(".../x"), "/a/b/.../x");
    EXPECT_EQ(folder.GetChildFile("/y"), "/y");
    EXPECT_EQ(File("/").GetChildFile("x"), "/x");
}

TEST(File, ComparesExtensions) {
    const File aif("/s/x.aif");
    EXPECT_TRUE(aif.HasFileExtension("wav .AIF aiff"));
    for (const char* others : {"wav aiff", ""}) EXPECT_FALSE(aif.HasFileExtension(others)) << others;
    EXPECT_TRUE(File("/s.d/x").HasFileExtension(""));
    StringArray list;
    EXPECT_FALSE(aif.HasOneOfTheseExtensions(list));
    StringArray::SplitString(list, "wav|mp3 aif", "|");
    EXPECT_TRUE(aif.HasOneOfTheseExtensions(list));
}

#ifdef _WIN32
constexpr const char* nameWithBlanks = " b";  // the system drops blanks at the end
#else
constexpr const char* nameWithBlanks = " b ";
#endif

TEST(File, CreatesAndDeletes) {
    const TempFolder folder;
    const std::string below = folder / "a/" + nameWithBlanks;
    const File deep((below + "/c").c_str());
    EXPECT_TRUE(deep.CreateDirectoryFor());
    EXPECT_TRUE(fs::is_directory(below)) << "blanks within the path belong to the names";
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(deep.CreateDirectory());
    EXPECT_FALSE(deep.ExistsAsFile());
    EXPECT_FALSE(File((folder / "a").c_str()).DeleteFile()) << "a folder that is not empty stays";
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(deep.DeleteFile()) << "there is nothing the second time";
    EXPECT_FALSE(fs::exists(below + "/c"));

    WriteBytes(folder / "file", "x");
    EXPECT_TRUE(File((folder / "file").c_str()).ExistsAsFile());
    EXPECT_FALSE(File((folder / "file/sub").c_str()).CreateDirectory());
    EXPECT_TRUE(File((folder / "file").c_str()).DeleteFile());
    EXPECT_THROW(File("~no-such-user").CreateDirectory(), Exception);
    EXPECT_TRUE(File("").CreateDirectory());
    EXPECT_FALSE(File("").ExistsAsFile());
}

#ifdef _WIN32
TEST(File, KnowsDrivesAndBackslashes) {
    const std::pair<const char*, const char*> rows[] = {{"C:\\sounds\\take.wav\\", "C:/sounds/take.wav"},
                                                        {"c:/", "c:/"},
                                                        {"\\\\server\\share\\a", "//server/share/a"},
                                                        {"\\a b\\c", "/a b/c"}};
    for (const auto& [path, expected] : rows) EXPECT_EQ(Parsed(path), expected) << path;
    const File file("C:\\take.wav");
    EXPECT_EQ(file.GetFileName(), "take.wav");
    EXPECT_EQ(file.GetParentDirectory(), "C:/");
    EXPECT_EQ(File("C:/").GetParentDirectory(), "C:/");
    EXPECT_EQ(File("C:/").GetChildFile("a\\b"), "C:/a/b");
    EXPECT_EQ(file.GetChildFile("D:\\x"), "D:/x");
    EXPECT_THROW(File("Q:/no/such/drive").CreateDirectory(), Exception);
}
#else
TEST(File, RelativePathsStayRelativeWithoutAWorkingDirectory) {
    const fs::path before = fs::current_path();
    {
        const TempFolder gone;
        fs::current_path(gone.Path());
    }
    EXPECT_EQ(File::GetCurrentWorkingDirectory(), "");
    EXPECT_EQ(Parsed("x/"), "x");
    fs::current_path(before);
}
#endif

TEST(File, HasAnyCharacterInItsName) {
    const TempFolder folder;
    const std::string name = "t\xC3\xA4ke \xE5\xA3\xB0 \xF0\x9F\x8E\xA7";
    const File file((folder / name + "/" + name).c_str());
    EXPECT_TRUE(file.CreateDirectoryFor());
    EXPECT_TRUE(fs::is_directory(Utf8Path(folder / name)));
    WriteBytes(file.GetFullPathName().Str(), "x");
    EXPECT_TRUE(file.ExistsAsFile());
    {
        const ScopedVariable home("HOME", folder / name);
        EXPECT_EQ(File("~").GetFullPathName().Str(), folder / name);
    }
    EXPECT_TRUE(file.DeleteFile());
    EXPECT_TRUE(fs::is_empty(Utf8Path(folder / name)));
}

}  // namespace
}  // namespace velmodsp
