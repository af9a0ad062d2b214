#include <gtest/gtest.h>

#include <filesystem>

#include "core/Dialogs.h"
#include "core/PathText.h"
#include "ext.h"

namespace fs = std::filesystem;

namespace {

TEST(Paths, GoFromFullNamesToFolderNumbersAndBack) {
    const std::string full = (fs::temp_directory_path() / "no such file.wav").generic_string();
    short folder = 1;
    char file[MAX_FILENAME_CHARS];
    ASSERT_EQ(path_frompathname(full.c_str(), &folder, file), 0);
    EXPECT_STREQ(file, "no such file.wav");
    EXPECT_LT(folder, 0);
    char name[MAX_PATH_CHARS];
    EXPECT_EQ(path_topotentialname(folder, file, name, 0), 0);
    EXPECT_EQ(name, full);
    EXPECT_NE(path_topotentialname(folder, file, name, 1), 0);
    EXPECT_NE(path_topathname(folder, file, name), 0);
    EXPECT_EQ(path_topathname(folder, "", name), 0);
    EXPECT_EQ(fs::canonical(name), fs::canonical(fs::temp_directory_path()));
    EXPECT_NE(path_frompathname("/no/such/folder/at/all/x", &folder, file), 0);
    EXPECT_NE(path_topotentialname(-30000, "x", name, 0), 0);
    const std::string tooLong(MAX_PATH_CHARS, 'x');
    EXPECT_NE(path_topotentialname(0, tooLong.c_str(), name, 0), 0);
}

TEST(Paths, TakeTheStyleAskedFor) {
    char name[MAX_PATH_CHARS];
    ASSERT_EQ(path_nameconform("a/../b/c.txt", name, PATH_STYLE_SLASH, PATH_TYPE_ABSOLUTE), 0);
    EXPECT_EQ(name, (fs::current_path() / "b/c.txt").generic_string());
    ASSERT_EQ(path_nameconform(name, name, PATH_STYLE_SLASH, PATH_TYPE_RELATIVE), 0);
    EXPECT_STREQ(name, "b/c.txt");
    ASSERT_EQ(path_nameconform("C:/b/c", name, PATH_STYLE_NATIVE_WIN, PATH_TYPE_IGNORE), 0);
    EXPECT_STREQ(name, "C:\\b\\c");
}

TEST(Paths, VolumesOfTheHostAreReachedThroughTheSystem) {
    EXPECT_EQ(velmohost::TranslateVolume("Data:/x/y.json"), "/Volumes/Data/x/y.json");
    EXPECT_EQ(velmohost::TranslateVolume("Macintosh HD:/a"), "/Volumes/Macintosh HD/a");
    for (const char* text : {"/a:/b", "a/b:/c", "name", ":/a", "a:b/c", ""}) {
        EXPECT_EQ(velmohost::TranslateVolume(text), text);
    }
}

TEST(Dialogs, AreCancelledUnlessTheirAnswerIsKnown) {
    char name[MAX_FILENAME_CHARS] = "file.json";
    short folder = 0;
    t_fourcc type = 0;
    t_fourcc types[] = {0x4A534F4E};
    EXPECT_NE(saveasdialog_extended(name, &folder, &type, types, 1), 0);
    EXPECT_STREQ(name, "file.json");
    velmohost::SetSaveAsAnswer((fs::temp_directory_path() / "state.json").string());
    EXPECT_NE(open_dialog(name, &folder, &type, types, 1), 0);
    EXPECT_EQ(saveasdialog_extended(name, &folder, &type, types, 1), 0);
    EXPECT_STREQ(name, "state.json");
    EXPECT_EQ(type, 0x4A534F4Eu);
    velmohost::SetSaveAsAnswer("/no/such/folder/state.json");
    EXPECT_NE(saveasdialog_extended(name, &folder, &type, types, 1), 0);
    velmohost::SetSaveAsAnswer("");
}

}  // namespace
