#include "math/VelmoDspMatFileWriter.h"

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <random>

#include "math/VelmoDspMatrix.h"
#include "support/FileBytes.h"
#include "support/FileSizeLimit.h"
#include "support/MatFile.h"
#include "support/MessageOf.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"

namespace velmodsp {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::HasSubstr;

/// Any pattern of bits, so NaNs of all kinds are among them.
template <typename T>
Matrix<T> RandomBits(unsigned long rows, unsigned long columns) {
    Matrix<T> matrix(rows, columns);
    std::mt19937_64 random(rows * 31 + columns);
    auto* bytes = reinterpret_cast<unsigned char*>(matrix.Data());
    for (std::size_t i = 0; i < rows * columns * sizeof(T); ++i) bytes[i] = static_cast<unsigned char>(random());
    return matrix;
}

template <typename T>
MatVariable Expected(const std::string& name, const Matrix<T>& matrix) {
    std::string bytes;
    for (unsigned long column = 0; column < matrix.GetNumColumns(); ++column)
        for (unsigned long row = 0; row < matrix.GetNumRows(); ++row)
            bytes.append(reinterpret_cast<const char*>(&matrix(row, column)), sizeof(T));
    return {name, sizeof(T) == 4 ? "single" : "double", {matrix.GetNumRows(), matrix.GetNumColumns()}, bytes};
}

class MatFileWriting : public testing::Test {
protected:
    std::vector<std::string> NamesInFile() const {
        std::vector<std::string> names;
        for (const MatVariable& variable : ReadMatFile(path)) names.push_back(variable.name);
        return names;
    }

    template <typename T>
    void CheckShapes() const {
        // The last two are longer than a block: many short columns, and a column of several blocks.
        const unsigned long shapes[][2] = {{1, 1}, {1, 3}, {3, 1},     {2, 3},     {0, 0},
                                           {0, 4}, {3, 0}, {7, 80001}, {600001, 2}};
        for (const auto& [rows, columns] : shapes) {
            SCOPED_TRACE(std::to_string(rows) + " x " + std::to_string(columns));
            const Matrix<T> matrix = RandomBits<T>(rows, columns);
            EXPECT_TRUE(matrix.SaveAsMatFile(file, "m", true));
            EXPECT_TRUE(ReadMatFile(path) == std::vector<MatVariable>{Expected("m", matrix)});
        }
    }

    TempFolder folder, trash;
    ScopedVariable dataHome{"XDG_DATA_HOME", trash.Path().string()};
    const std::string path = folder / "new/data.mat";
    const File file{path.c_str()};
};

TEST_F(MatFileWriting, EveryBitOfEveryShapeComesBack) {
    CheckShapes<float>();
    CheckShapes<double>();
}

TEST_F(MatFileWriting, SpecialValuesComeBackAsTheyAre) {
    Matrix<double> matrix(2, 2);
    matrix(0, 0) = -0.0;
    matrix(0, 1) = INFINITY;
    matrix(1, 0) = -INFINITY;
    matrix(1, 1) = std::bit_cast<double>(0xFFF4000000000001u);  // a signalling NaN with a sign and a payload
    EXPECT_TRUE(matrix.SaveAsMatFile(file, "special", false));
    EXPECT_THAT(ReadMatFile(path), ElementsAre(Expected("special", matrix)));
}

TEST_F(MatFileWriting, BytesOfAFile) {
    Matrix<float> one(1, 1);
    one(0, 0) = 1.0f;
    Matrix<double> two(2, 1);
    two(0, 0) = 1.0;
    two(1, 0) = -2.0;
    Matrix<float> three(1, 3);
    MatFileWriter writer(file, false);
    EXPECT_TRUE(writer.Write("a", one));
    EXPECT_TRUE(writer.Write("gains", two));
    EXPECT_TRUE(writer.Write("name", three));

    const std::string text = "MATLAB 5.0 MAT-file, written by velmodsp";
    const std::string expected =
        text + std::string(116 - text.size(), ' ') + std::string(8, '\0') + "\x00\x01IM"s +
        // a variable of 48 bytes: flags with the class, rows and columns, a name and an element within their tags
        "\x0E\0\0\0\x30\0\0\0"s + "\x06\0\0\0\x08\0\0\0\x07\0\0\0\0\0\0\0"s +
        "\x05\0\0\0\x08\0\0\0\x01\0\0\0\x01\0\0\0"s + "\x01\0\x01\0a\0\0\0"s + "\x07\0\x04\0\0\0\x80\x3F"s +
        // 72 bytes: a name that does not fit its tag any more, padded to 8 bytes
        "\x0E\0\0\0\x48\0\0\0"s + "\x06\0\0\0\x08\0\0\0\x06\0\0\0\0\0\0\0"s +
        "\x05\0\0\0\x08\0\0\0\x02\0\0\0\x01\0\0\0"s + "\x01\0\0\0\x05\0\0\0gains\0\0\0"s +
        "\x09\0\0\0\x10\0\0\0\0\0\0\0\0\0\xF0\x3F\0\0\0\0\0\0\0\xC0"s +
        // 64 bytes: a name that just fits its tag, and elements padded to 8 bytes
        "\x0E\0\0\0\x40\0\0\0"s + "\x06\0\0\0\x08\0\0\0\x07\0\0\0\0\0\0\0"s +
        "\x05\0\0\0\x08\0\0\0\x01\0\0\0\x03\0\0\0"s + "\x01\0\x04\0name"s + "\x07\0\0\0\x0C\0\0\0"s +
        std::string(16, '\0');
    EXPECT_EQ(ReadBytes(path), expected);
}

TEST_F(MatFileWriting, SeveralVariablesAndNamesOfEveryLength) {
    const std::vector<std::string> names = {"a", "abcd", "Ab_01", "A", std::string(62, 'x'), std::string(63, 'x')};
    std::vector<MatVariable> expected;
    MatFileWriter writer(file, false);
    for (unsigned long i = 0; i < names.size(); ++i) {
        const Matrix<float> matrix = RandomBits<float>(i, 2);
        EXPECT_TRUE(writer.Write(names[i].c_str(), matrix));
        expected.push_back(Expected(names[i], matrix));
        EXPECT_EQ(ReadMatFile(path), expected) << "the file is complete after every variable";
    }
}

TEST_F(MatFileWriting, RefusesWhatDoesNotFitTheFormatAndTouchesNothing) {
    std::filesystem::create_directory(folder / "new");
    WriteBytes(path, "old");
    MatFileWriter writer(file, true);
    for (const std::string& name :
         {""s, "1a"s, "_a"s, "a b"s, "a.b"s, "gr\xC3\xBC\xC3\x9F"s, "a\0b"s, std::string(64, 'x')}) {
        const auto write = [&] { writer.Write(String(name), Matrix<float>(1, 1)); };
        EXPECT_THAT(MessageOf(write),
                    HasSubstr("Invalid name for a Matlab variable : \"" + name.substr(0, name.find('\0'))));
    }
    constexpr unsigned long tooMany = 1ul << 31;
    EXPECT_EQ(MessageOf([&] { writer.Write("m", Matrix<float>(tooMany, 0)); }),
              "Matrix too large for a Matlab file : m has 2147483648 x 0 elements");
    EXPECT_EQ(MessageOf([&] { writer.Write("m", Matrix<double>(0, tooMany)); }),
              "Matrix too large for a Matlab file : m has 0 x 2147483648 elements");
    EXPECT_EQ(ReadBytes(path), "old");

    EXPECT_TRUE(writer.Write("m", Matrix<float>(0, tooMany - 1)));
    EXPECT_EQ(MessageOf([&] { writer.Write("m", Matrix<double>(1, 1)); }), "Variable m is already in file : " + path);
    EXPECT_TRUE(writer.Write("M", Matrix<double>(1, 1)));
    EXPECT_THAT(NamesInFile(), ElementsAre("m", "M"));
}

TEST_F(MatFileWriting, AnExistingFileStaysOrGoesToTheTrash) {
    const Matrix<double> matrix(3, 3);
    EXPECT_TRUE(matrix.SaveAsMatFile(file, "first_name", false));
    EXPECT_EQ(MessageOf([&] { matrix.SaveAsMatFile(file, "b", false); }), "File already exists : " + path);
    EXPECT_THAT(NamesInFile(), ElementsAre("first_name"));
    EXPECT_TRUE(Matrix<float>(1, 1).SaveAsMatFile(file, "c", true));
    EXPECT_THAT(NamesInFile(), ElementsAre("c")) << "nothing of the longer file is left";
    EXPECT_THAT(ReadBytes(trash / "Trash/files/data.mat"), HasSubstr("first_name"));
}

TEST_F(MatFileWriting, AFailedWriteIsToldAndLeavesWholeVariables) {
    const Matrix<double> small(2, 2), large(100, 100);
    {
        const FileSizeLimit fullDisk(10000);
        MatFileWriter writer(file, false);
        EXPECT_TRUE(writer.Write("small", small));
        EXPECT_FALSE(writer.Write("large", large));
        EXPECT_FALSE(writer.Write("later", small));
        EXPECT_THAT(NamesInFile(), ElementsAre("small"));

        const File other((folder / "other.mat").c_str());
        EXPECT_FALSE(large.SaveAsMatFile(other, "large", false));
        EXPECT_FALSE(other.ExistsAsFile());
    }
    EXPECT_EQ(std::filesystem::file_size(path), 128u + 8 + 88) << "and nothing behind them";
    EXPECT_FALSE(small.SaveAsMatFile(File(""), "small", false));
}

}  // namespace
}  // namespace velmodsp
