#include "math/VelmoDspMatrix.h"

#include <gmock/gmock.h>

#include <cmath>
#include <iomanip>
#include <limits>
#include <sstream>

#include "files/VelmoDspFile.h"
#include "support/FileBytes.h"
#include "support/MessageOf.h"
#include "support/TempFolder.h"

namespace velmodsp {
namespace {

template <typename T>
Matrix<T> Of(unsigned long rows, unsigned long columns, const std::vector<T>& elements) {
    Matrix<T> matrix(rows, columns);
    std::copy(elements.begin(), elements.end(), matrix.Data());
    return matrix;
}

struct CountingBuffer : std::stringbuf {
    int sync() override { return ++flushes, 0; }
    long flushes = 0;
};

/// What `print` writes into a stream whose own settings must not matter. Each line must be flushed.
template <typename Print>
std::string Text(Print print) {
    CountingBuffer buffer;
    std::ostream stream(&buffer);
    stream << std::hex << std::showbase << std::setfill('*') << std::setw(30);
    print(stream);
    const std::string text = buffer.str();
    EXPECT_EQ(buffer.flushes, std::count(text.begin(), text.end(), '\n'));
    return text;
}

TEST(Matrix, PrintsThreeFormsWithAPrecision) {
    const auto matrix = Of<double>(2, 2, {1.0, -0.125, NAN, 1e20});
    EXPECT_EQ(Text([&](auto& out) { matrix.Print(out, 2, "m"); }),
              "matrix 2 x 2\n"
              "m = \n"
              "1.00 -0.13 \n"
              "nan 1e+20 \n");
    EXPECT_EQ(Text([&](auto& out) { matrix.PrintMatlabLike(out, 1, "m"); }),
              "% matrix 2 x 2\n"
              "m = [ ...\n"
              "1.0 -0.1 ; ...\n"
              "nan 1e+20 ; ...\n"
              "...\n"
              "]; \n");
    EXPECT_EQ(Text([&](auto& out) { matrix.PrintLatexLike(out, 0, "m"); }),  // the word stands for every name
              "\\begin{equation}\n"
              "\\begin{pmatrix}\n"
              "name = \n"
              "\\begin{array}{cc}\n"
              "                     1  & -0.125  \\\\ \n"
              "\\noalign{\\smallskip} nan  & 1e+20  \\\\ \n"
              "\\end{array}\n"
              "\\end{pmatrix}\n"
              "\\end{equation}\n");
}

TEST(Matrix, PrintsWithAFormat) {
    const auto row = Of<float>(1, 2, {0.1f, -INFINITY});
    using testing::HasSubstr;
    EXPECT_THAT(Text([&](auto& out) { row.Print(out, "%.9f", "m"); }), HasSubstr("m = \n0.100000001 -inf \n"));
    EXPECT_THAT(Text([&](auto& out) { row.PrintMatlabLike(out, "%.3e", "m"); }), HasSubstr("[ ...\n1.000e-01 -inf ; "));
    EXPECT_THAT(Text([&](auto& out) { row.PrintLatexLike(out, "%g", "m"); }), HasSubstr(" 0.1  & -inf  \\\\ \n"));
}

TEST(Matrix, PrintsItsFrameAloneWithoutElements) {
    const Matrix<float> noRows(0, 1);
    EXPECT_EQ(Text([&](auto& out) { noRows.Print(out, 2, "m"); }), "matrix 0 x 1\nm = \n");
    EXPECT_EQ(Text([&](auto& out) { noRows.PrintMatlabLike(out, 2, ""); }), "% matrix 0 x 1\n[ ...\n...\n]; \n");
    EXPECT_EQ(
        Text([&](auto& out) { noRows.PrintLatexLike(out, 2, ""); }),
        "\\begin{equation}\n\\begin{pmatrix}\n\\begin{array}{c}\n\\end{array}\n\\end{pmatrix}\n\\end{equation}\n");
}

TEST(Matrix, KeepsShapeAndElementsTogether) {
    auto matrix = Of<float>(2, 3, {1, 2, 3, 4, 5, 6});
    matrix.Resize(2, 3);
    EXPECT_EQ(matrix(1, 0), 4.0f) << "row after row, and the same shape changes nothing";
    constexpr unsigned long largest = std::numeric_limits<unsigned long>::max();
    const auto tooLarge = [&] { matrix.Resize(2, largest / 2 + 2); };  // 2 elements, if the product wrapped
    EXPECT_THAT(MessageOf(tooLarge), testing::StartsWith("out of memory occured in "));
#ifndef _WIN32  // where sizes have 32 bits, and a large machine has room for it
    EXPECT_THROW(matrix.Resize(largest, 1), Exception);
#endif

    Matrix<float> target(5, 5);
    target = std::move(matrix);
    const Matrix<float> moved(std::move(target));
    EXPECT_EQ(moved(1, 2), 6.0f);
    EXPECT_EQ(target.GetNumRows() + target.GetNumColumns(), 0u);  // NOLINT(bugprone-use-after-move): still of use

    matrix = moved;
    matrix.Resize(3, 2);
    EXPECT_THAT(std::vector<float>(matrix.Data(), matrix.Data() + 6), testing::Each(0.0f));
}

TEST(Matrix, SaveAsLeavesAnEmptyFile) {
    const TempFolder folder;
    const Matrix<double> matrix(2, 2);
    WriteBytes(folder / "old", "something");
    EXPECT_TRUE(matrix.SaveAs(File((folder / "old").c_str()), 2, "m"));
    EXPECT_TRUE(matrix.SaveAs(File((folder / "new").c_str()), "%g", "m"));
    EXPECT_EQ(std::filesystem::file_size(folder / "old") + std::filesystem::file_size(folder / "new"), 0u);
    EXPECT_FALSE(matrix.SaveAs(File((folder / "missing/new").c_str()), 2, "m"));
}

}  // namespace
}  // namespace velmodsp
