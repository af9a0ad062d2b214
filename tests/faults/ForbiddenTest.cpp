// Files and folders that may not be read or written, also for those who run this as root.

#include <gmock/gmock.h>
#include <unistd.h>

#include "Writers.h"
#include "audiofiles/VelmoDspAudioFileReader.h"
#include "files/VelmoDspFileReader.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

/// Gives up root's rights, which no permission binds, as long as it lives.
class ScopedNobody {
public:
    ScopedNobody() : wasRoot(geteuid() == 0), isBound(!wasRoot || seteuid(65534) == 0) {}
    ~ScopedNobody() {
        if (wasRoot && isBound) std::ignore = seteuid(0);
    }
    ScopedNobody(const ScopedNobody&) = delete;
    ScopedNobody& operator=(const ScopedNobody&) = delete;

    /// Whether permissions count now.
    bool IsBound() const { return isBound; }

private:
    const bool wasRoot, isBound;
};

class Forbidden : public Writers {
protected:
    void SetUp() override {
        if (!ScopedNobody().IsBound()) GTEST_SKIP() << "root that cannot become anybody else is forbidden nothing";
        fs::permissions(sources.Path(), fs::perms(0777));
    }
};

TEST_F(Forbidden, FoldersAreTold) {
    const TempFolder folder;
    fs::permissions(folder.Path(), fs::perms(0555));
    for (Writer& writer : All()) {
        // What cannot even be opened is not the object's to tell.
        if (writer.name == "state.json") writer.failure = "done";
        if (writer.name.ends_with(".wav") && !writer.keepsBeginning) writer.failure += "the file cannot be created\n";
        ExpectFailure(writer, folder.Path().string(), [&] {
            const ScopedNobody nobody;
            return writer.write(folder.Path().string());
        });
        EXPECT_TRUE(fs::is_empty(folder.Path())) << writer.name;
    }
    fs::permissions(folder.Path(), fs::perms(0755));
}

TEST_F(Forbidden, FilesKeepTheirContent) {
    const TempFolder folder;
    fs::permissions(folder.Path(), fs::perms(0777));
    for (const Writer& writer : All()) {
        if (writer.name != "bytes" && writer.name != "state.json" && !writer.name.ends_with(".xml")) continue;
        const std::string file = folder / writer.name;
        WriteBytes(file, "older");
        fs::permissions(file, fs::perms(0444));
        {
            const ScopedNobody nobody;
            EXPECT_EQ(writer.write(folder.Path().string()) == "done", writer.name == "state.json") << writer.name;
        }
        EXPECT_EQ(ReadBytes(file), "older");
    }
}

TEST_F(Forbidden, SourcesAreTold) {
    using velmodsp::AudioFileReader;
    const velmodsp::File file((sources / "in.wav").c_str());
    fs::permissions(sources / "in.wav", fs::perms(0));
    std::string scanned, repaired, run;
    {
        const ScopedNobody nobody;
        EXPECT_EQ(MessageOf([&] { velmodsp::FileReader{file}; }), "Couldnt open file " + sources / "in.wav");
        EXPECT_EQ(MessageOf([&] { AudioFileReader::CreateReaderFor(file); }),
                  "file " + sources / "in.wav" + " is not a valid audio file");
        EXPECT_FALSE(buffer.LoadFromAudioFile(file));
        scanned = velmotest::RunCommand({"scan", sources / "in.wav"});
        repaired = velmotest::RunCommand({"repair", sources / "in.wav", "--path", VELMO_EXTERNALS_DIR});
        run = velmotest::RunCommand({"run", "tesk.fixnan~", "--path", VELMO_EXTERNALS_DIR, "--in", sources / "in.wav"});
    }
    for (const std::string& printed : {scanned, repaired, run}) {
        EXPECT_TRUE(printed.starts_with("1 ")) << printed;
        EXPECT_THAT(printed, HasSubstr("velmohost: cannot read " + sources / "in.wav" +
                                       ": it cannot be opened; may it be read?\n"));
    }
}

using Misplaced = Writers;

TEST_F(Misplaced, FilesAreTold) {
    const TempFolder folder;
    WriteBytes(folder / "file", "a file");
    for (const Writer& writer : All()) {
        if (writer.name == "fixed.wav") continue;  // a folder is a good place for it
        fs::create_directory(folder / writer.name);
        for (const std::string& place : {folder.Path().string(), folder / "file"}) {  // no rights help with either
            std::string told;
            const std::string thrown = MessageOf([&] { told = writer.write(place); });
            // What cannot even be opened is not the object's to tell.
            EXPECT_EQ(told == "done", writer.name == "state.json") << writer.name << " in " << place;
            EXPECT_TRUE(!told.empty() || thrown.find(place) != thrown.npos) << thrown;
        }
        EXPECT_TRUE(fs::is_empty(folder / writer.name));
        fs::remove(folder / writer.name);
    }
    EXPECT_EQ(ReadBytes(folder / "file"), "a file");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()), 1);
}

}  // namespace
