#include "files/VelmoDspFile.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "support/FileBytes.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"
#include "utils/VelmoDspException.h"

namespace velmodsp {
namespace {

namespace fs = std::filesystem;

String Parsed(const char* path) { return File::parseAbsolutePath(path); }

TEST(File, MakesPathsAbsoluteAndNormal) {
    const ScopedVariable home("HOME", "/home/user/");
    const ScopedVariable otherHome("home", "/other");
    const String cwd = fs::current_path().c_str();
    const std::pair<const char*, String> rows[] = {{"", ""},
                                                   {"//", "/"},
                                                   {"/tmp///", "/tmp"},
                                                   {"  ~/a/b/ ", "/home/user/a/b"},
                                                   {"~", "/home/user"},
                                                   {"~no-such-user/x/", "~no-such-user/x"},
                                                   {"a\\ b", cwd + "/a b"},
                                                   {"/a\\\\ b", "/a\\ b"},
                                                   {"/a\\b", "/a\\b"},
                                                   {"../x", String(fs::current_path().parent_path().c_str()) + "/x"},
                                                   {".hidden", cwd + "/.hidden"},
                                                   {".", cwd + "/."},
                                                   {" ", cwd}};
    for (const auto& [path, expected] : rows) EXPECT_EQ(Parsed(path), expected) << path;
}

TEST(File, FindsTheHomeDirectoryInTheEnvironment) {
    const auto homeWith = [](std::optional<std::string> upper, std::optional<std::string> lower) {
        const ScopedVariable home("HOME", upper);
        const ScopedVariable otherHome("home", lower);
        return File::GetUserHomeDirectory();
    };
    const String cwd = File::GetCurrentWorkingDirectory();
    EXPECT_EQ(homeWith("/upper/", "/lower"), "/upper");
    EXPECT_EQ(homeWith(std::nullopt, "/lower"), "/lower");
    EXPECT_EQ(homeWith(std::nullopt, std::nullopt), cwd);
    EXPECT_EQ(homeWith("rel", std::nullopt), cwd + "/rel");
    for (const char* selfReferring : {"~", " ~/x"}) EXPECT_EQ(homeWith(selfReferring, "~"), cwd) << selfReferring;
    EXPECT_EQ(Parsed("~root/x"), "/root/x") << "root's home directory comes from the password database";
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

TEST(File, CreatesAndDeletes) {
    const TempFolder folder;
    const File deep((folder / "a/ b /c").c_str());
    EXPECT_TRUE(deep.CreateDirectoryFor());
    EXPECT_TRUE(fs::is_directory(folder / "a/ b ")) << "blanks within the path belong to the names";
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(deep.CreateDirectory());
    EXPECT_FALSE(deep.ExistsAsFile());
    EXPECT_FALSE(File((folder / "a").c_str()).DeleteFile()) << "a folder that is not empty stays";
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(deep.DeleteFile()) << "there is nothing the second time";
    EXPECT_FALSE(fs::exists(folder / "a/ b /c"));

    WriteBytes(folder / "file", "x");
    EXPECT_TRUE(File((folder / "file").c_str()).ExistsAsFile());
    EXPECT_FALSE(File((folder / "file/sub").c_str()).CreateDirectory());
    EXPECT_TRUE(File((folder / "file").c_str()).DeleteFile());
    EXPECT_THROW(File("~no-such-user").CreateDirectory(), Exception);
    EXPECT_TRUE(File("").CreateDirectory());
    EXPECT_FALSE(File("").ExistsAsFile());
}

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

}  // namespace
}  // namespace velmodsp
