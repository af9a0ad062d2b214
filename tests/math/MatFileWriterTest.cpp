#include "math/VelmoDspMatFileWriter.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <random>

#include "math/VelmoDspMatrix.h"
#include "support/FileBytes.h"
#include "support/FileSizeLimit.h"
#include "support/MatFile.h"
#include "support/MessageOf.h"
#include "support/OwnTrash.h"
#include "support/TempFolder.h"

namespace velmodsp {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;

/// A matrix of any bits, so that NaNs of all kinds are among them, after as many of the special values as it holds.
template <typename T>
Matrix<T> AnyBits(unsigned long rows, unsigned long columns) {
    const T special[] = {-T(0), INFINITY, -INFINITY, NAN, std::numeric_limits<T>::denorm_min()};
    Matrix<T> matrix(rows, columns);
    std::mt19937 random(1);
    auto* bytes = reinterpret_cast<unsigned char*>(matrix.Data());
    for (std::size_t i = 0; i < rows * columns * sizeof(T); ++i) bytes[i] = static_cast<unsigned char>(random());
    std::copy_n(special, std::min(rows * columns, 5ul), matrix.Data());
    return matrix;
}

template <typename T>
MatVariable Variable(const std::string& name, const Matrix<T>& matrix) {
    std::string bytes;
    for (unsigned long column = 0; column < matrix.GetNumColumns(); ++column)
        for (unsigned long row = 0; row < matrix.GetNumRows(); ++row)
            bytes.append(reinterpret_cast<const char*>(&matrix(row, column)), sizeof(T));
    return {name, sizeof(T) == 4 ? MAT_C_SINGLE : MAT_C_DOUBLE, {matrix.GetNumRows(), matrix.GetNumColumns()}, bytes};
}

class MatFileWriting : public testing::Test {
protected:
    /// Writes variables of all shapes and lengths of names into one file, which must be complete after each.
    template <typename T>
    void CheckShapes(const std::string& filePath) const {
        const struct {
            std::string name;
            unsigned long rows, columns;
        } variables[] = {{"a", 1, 1}, {"abcd", 1, 3}, {"Ab_01", 3, 2},    {std::string(62, 'x'), 0, 0},
                         {"A", 0, 4}, {"none", 3, 0}, {"wide", 7, 80001}, {std::string(63, 'x'), 600001, 2}};
        MatFileWriter writer(File(filePath.c_str()), false);
        std::vector<MatVariable> expected;
        for (const auto& [name, rows, columns] : variables) {
            const Matrix<T> matrix = AnyBits<T>(rows, columns);
            expected.push_back(Variable(name, matrix));
            EXPECT_TRUE(writer.Write(name.c_str(), matrix));
            EXPECT_TRUE(ReadMatFile(filePath) == expected) << name;  // not EXPECT_EQ, which would print megabytes
        }
    }

    TempFolder folder;
    OwnTrash trash;
    const std::string path = folder / "new/data.mat";
    const File file{path.c_str()};
};

TEST_F(MatFileWriting, EveryBitOfEveryShapeComesBack) {
    CheckShapes<float>(folder / "float.mat");
    CheckShapes<double>(folder / "double.mat");
}

TEST_F(MatFileWriting, BytesOfAFile) {
    MatFileWriter writer(file, false);
    EXPECT_TRUE(writer.Write("name", Matrix<float>(1, 1)));
    EXPECT_TRUE(writer.Write("a", Matrix<float>(1, 3)));
    const std::string text = "MATLAB 5.0 MAT-file, written by velmodsp";
    const std::string isSingle = "\x06\0\0\0\x08\0\0\0\x07\0\0\0\0\0\0\0"s, size = "\x05\0\0\0\x08\0\0\0"s;
    EXPECT_EQ(ReadBytes(path), text + std::string(116 - text.size(), ' ') + std::string(8, '\0') + "\x00\x01IM"s +
                                   // 48 bytes: a name and an element that just fit their tags
                                   "\x0E\0\0\0\x30\0\0\0"s + isSingle + size + "\x01\0\0\0\x01\0\0\0"s +
                                   "\x01\0\x04\0name"s + "\x07\0\x04\0\0\0\0\0"s +
                                   // 64 bytes: three elements padded to 8 bytes
                                   "\x0E\0\0\0\x40\0\0\0"s + isSingle + size + "\x01\0\0\0\x03\0\0\0"s +
                                   "\x01\0\x01\0a\0\0\0"s + "\x07\0\0\0\x0C\0\0\0"s + std::string(16, '\0'));
}

TEST_F(MatFileWriting, RefusesWhatDoesNotFitTheFormatAndTouchesNothing) {
    EXPECT_TRUE(Matrix<double>(9, 9).SaveAsMatFile(file, "old", false));
    const std::string old = ReadBytes(path);
    EXPECT_EQ(MessageOf([&] { Matrix<float>().SaveAsMatFile(file, "m", false); }), "File already exists : " + path);
    MatFileWriter writer(file, true);
    for (const std::string& name : {""s, "1a"s, "_a"s, "a b"s, "a\xC3\xBC"s, "a\0b"s, std::string(64, 'x')})
        EXPECT_THAT(MessageOf([&] { writer.Write(String(name), Matrix<float>(1, 1)); }),
                    HasSubstr("Invalid name for a Matlab variable : \"" + name.substr(0, name.find('\0'))));
    constexpr unsigned long tooMany = 1ul << 31;
    EXPECT_EQ(MessageOf([&] { writer.Write("m", Matrix<float>(tooMany, 0)); }),
              "Matrix too large for a Matlab file : m has 2147483648 x 0 elements");
    EXPECT_THROW(writer.Write("m", Matrix<double>(0, tooMany)), Exception);
    EXPECT_EQ(ReadBytes(path), old);

    EXPECT_TRUE(writer.Write("m", Matrix<float>(0, tooMany - 1)));
    EXPECT_EQ(MessageOf([&] { writer.Write("m", Matrix<double>(1, 1)); }), "Variable m is already in file : " + path);
    EXPECT_TRUE(writer.Write("M", Matrix<double>(1, 1)));
    EXPECT_THAT(ReadMatFile(path), ElementsAre(Field(&MatVariable::name, "m"), Field(&MatVariable::name, "M")));
    EXPECT_EQ(ReadBytes(trash / "data.mat"), old);
}

TEST_F(MatFileWriting, AFailedWriteIsToldAndLeavesWholeVariables) {
    const Matrix<double> small(2, 2), large(100, 100);
    const FileSizeLimit fullDisk(10000);
    MatFileWriter writer(file, false);
    EXPECT_TRUE(writer.Write("small", small));
    EXPECT_FALSE(writer.Write("large", large));
    EXPECT_FALSE(writer.Write("later", small));
    EXPECT_THAT(ReadMatFile(path), ElementsAre(Variable("small", small)));
    EXPECT_EQ(std::filesystem::file_size(path), 128u + 8 + 88) << "nothing of the large one is left";
    EXPECT_FALSE(small.SaveAsMatFile(File(""), "small", false));
}

}  // namespace
}  // namespace velmodsp
