#include <gtest/gtest.h>
#ifndef _WIN32
#include <sys/mman.h>
#endif

#include <filesystem>

#include "files/VelmoDspFileReader.h"
#include "files/VelmoDspFileWriter.h"
#include "support/FileBytes.h"
#include "support/FileSizeLimit.h"
#include "support/MessageOf.h"
#include "support/TempFolder.h"

namespace velmodsp {
namespace {

namespace fs = std::filesystem;

class FileStreamsTest : public testing::Test {
protected:
    FileReader Reader(const std::string& bytes) const {
        WriteBytes(path, bytes);
        return FileReader(File(path.c_str()));
    }

    TempFolder folder;
    std::string path = folder / "stream";
};

TEST_F(FileStreamsTest, ReadsTypedValuesInBothByteOrders) {
    FileReader reader = Reader("\x12\x34\x12\x34\x80\x01\x02\x83\x80\x01\x02\x83\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF");
    EXPECT_EQ(reader.GetSize(), 21);
    EXPECT_EQ(reader.ReadShort(), 0x3412);
    EXPECT_EQ(reader.ReadShortBigEndian(), 0x1234);
    EXPECT_EQ(reader.ReadUnsignedInt(), 0x83020180u);
    EXPECT_EQ(reader.ReadUnsignedIntBigEndian(), 0x80010283u);
    EXPECT_EQ(reader.ReadInt64(), -2);
    EXPECT_EQ(reader.ReadByte(), -1);
    EXPECT_TRUE(reader.IsExhausted());
    reader.SetPosition(4);
    EXPECT_EQ(reader.ReadInt(), -0x7CFDFE80);
    EXPECT_EQ(reader.ReadIntBigEndian(), -0x7FFEFD7D);
}

TEST_F(FileStreamsTest, ReadsZerosAndShortCountsAtTheEnd) {
    FileReader reader = Reader("abc");
    reader.SetPosition(2);
    EXPECT_EQ(reader.ReadShort(), 0) << "half a value is none";
    EXPECT_EQ(reader.GetPosition(), 3);
    char buffer[8];
    reader.SetPosition(1);
    EXPECT_EQ(reader.Read(buffer, sizeof buffer), 2);
    EXPECT_EQ(std::string(buffer, 2), "bc");
    reader.SetPosition(std::int64_t{5} << 32);
    EXPECT_EQ(reader.Read(buffer, 1), 0);
    EXPECT_TRUE(reader.IsExhausted());
    reader.SetPosition(-1);
    EXPECT_EQ(reader.Read(buffer, 1), 0);
    reader.SetPosition(1);
    EXPECT_EQ(reader.ReadByte(), 'b') << "a failed seek does not break the reader";
    reader.SkipNextBytes(1000000000000);
    EXPECT_EQ(reader.GetPosition(), 3);

    FileReader longReader = Reader(std::string(10000, '-') + "x");  // longer than what is skipped at once
    longReader.SetPosition(1);
    longReader.SkipNextBytes(9999);
    EXPECT_EQ(longReader.ReadByte(), 'x');
}

TEST_F(FileStreamsTest, CopiesOfAReaderShareTheFileUntilTheLastIsGone) {
    auto original = std::make_unique<FileReader>(Reader("abcd"));
    EXPECT_EQ(original->ReadByte(), 'a');
    FileReader copy = *original;
    EXPECT_EQ(original->ReadByte(), 'b');
    EXPECT_EQ(copy.GetPosition(), 1);
    EXPECT_EQ(copy.ReadByte(), 'c') << "both stand at the same place of the file";
    original.reset();
    WriteBytes(folder / "other", "would get the descriptor if it were closed");
    const FileReader other(File((folder / "other").c_str()));
    EXPECT_EQ(copy.ReadByte(), 'd');
}

TEST_F(FileStreamsTest, RefusesWhatIsNoFile) {
    for (const std::string& name : {path, Utf8Text(folder.Path())})
        EXPECT_EQ(MessageOf([&] { FileReader{File(name.c_str())}; }), "File : " + name + " does not exist");
}

TEST_F(FileStreamsTest, WritesTypedValuesInBothByteOrders) {
    {
        FileWriter writer{File((folder / "new/folder/stream").c_str())};
        EXPECT_TRUE(writer.WriteByte('a') && writer.WriteShort(0x0102) && writer.WriteShortBigEndian(-2) &&
                    writer.WriteInt(0x01020304) && writer.WriteIntBigEndian(0x01020304) && writer.WriteInt64(-2) &&
                    writer.WriteDouble(-2.0) && writer.WriteRepeatedByte(0xAB, 2) && writer.WriteRepeatedByte(0, 0));
        EXPECT_EQ(writer.GetPosition(), 31);
    }
    using namespace std::string_literals;
    EXPECT_EQ(ReadBytes(folder / "new/folder/stream"),
              "a\x02\x01\xFF\xFE\x04\x03\x02\x01\x01\x02\x03\x04"
              "\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\0\0\0\0\0\0\0\xC0\xAB\xAB"s);
}

TEST_F(FileStreamsTest, WritesOverTheStartOfAnExistingFileAndKeepsItsTail) {
    WriteBytes(path, "0123456789");
    FileWriter writer{File(path.c_str())};
    EXPECT_TRUE(writer.Write("ab", 2));
    EXPECT_TRUE(writer.SetPosition(5));
    EXPECT_TRUE(writer.WriteByte('c'));
    EXPECT_EQ(ReadBytes(path), "ab234c6789");
    const std::uint64_t beyondFourGigabytes = std::uint64_t{5} << 32;
    EXPECT_TRUE(writer.SetPosition(beyondFourGigabytes));
    EXPECT_TRUE(writer.WriteByte('d'));
    EXPECT_EQ(fs::file_size(path), beyondFourGigabytes + 1);
    for (int i = 0; i < 2; ++i) EXPECT_FALSE(writer.SetPosition(~std::uint64_t{0}));
    EXPECT_EQ(writer.GetPosition(), -1);
    EXPECT_TRUE(writer.SetPosition(0));
}

TEST_F(FileStreamsTest, AWriterWithoutAFileFailsEveryWrite) {
    FileWriter writer{File(Utf8Text(folder.Path()).c_str())};
    EXPECT_FALSE(writer.WriteByte('a'));
    EXPECT_EQ(writer.GetPosition(), 0);
    EXPECT_FALSE(writer.SetPosition(1));
    EXPECT_EQ(writer.GetPosition(), -1);
    WriteBytes(path, "");
    EXPECT_THROW(FileWriter{File((path + "/below/a/file").c_str())}, Exception);
}

#ifndef _WIN32  // no limit to a file's size, and no memory without room for it
TEST_F(FileStreamsTest, TellsHowMuchAFullDiskTook) {
    FileWriter writer{File(path.c_str())};
    const std::string block(90, 'x');
    const FileSizeLimit limit(100);
    EXPECT_TRUE(writer.Write(block.data(), block.size()));
    EXPECT_FALSE(writer.Write(block.data(), block.size()));
    EXPECT_EQ(writer.GetPosition(), 100);
    EXPECT_FALSE(writer.WriteRepeatedByte('x', 3));
}

TEST_F(FileStreamsTest, WritesMoreThanOneSystemCallCanTake) {
    constexpr std::size_t size = std::size_t{3} << 30;
    void* zeros = mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(zeros, MAP_FAILED);
    FileWriter writer{File("/dev/null")};
    EXPECT_TRUE(writer.Write(zeros, size));
    EXPECT_EQ(writer.GetPosition(), static_cast<std::int64_t>(size));
    munmap(zeros, size);
}
#endif

}  // namespace
}  // namespace velmodsp
