#include "math/VelmoDspMatrix.h"

#include <gmock/gmock.h>

#include <cmath>
#include <iomanip>
#include <limits>
#include <locale>
#include <sstream>

#include "files/VelmoDspFile.h"
#include "support/FileBytes.h"
#include "support/MessageOf.h"
#include "support/TempFolder.h"

namespace velmodsp {
namespace {

template <typename T>
Matrix<T> Filled(std::initializer_list<std::initializer_list<T>> rows) {
    Matrix<T> matrix(rows.size(), rows.begin()->size());
    T* element = matrix.Data();
    for (const auto& row : rows) element = std::copy(row.begin(), row.end(), element);
    return matrix;
}

/// What `print` writes into a stream whose own settings must not matter.
template <typename Print>
std::string Text(Print print) {
    struct Grouping : std::numpunct<char> {
        std::string do_grouping() const override { return "\1"; }
        char do_decimal_point() const override { return ','; }
    };
    std::ostringstream stream;
    stream.imbue(std::locale(stream.getloc(), new Grouping));
    stream << std::hex << std::showpos << std::setfill('*') << std::setw(30);
    print(stream);
    return stream.str();
}

/// Counts the flushes of its stream.
struct FlushCounter : std::stringbuf {
    int sync() override { return ++flushes, 0; }
    int flushes = 0;
};

const Matrix<double> twoByTwo = Filled<double>({{1.0, -0.125}, {NAN, 1e20}});

TEST(Matrix, PrintsAPlainListing) {
    EXPECT_EQ(Text([](auto& out) { twoByTwo.Print(out, 2, "m"); }),
              "matrix 2 x 2\n"
              "m = \n"
              "1.00 -0.13 \n"
              "nan 1e+20 \n");
    EXPECT_EQ(Text([](auto& out) {
                  Filled<float>({{0.1f, -INFINITY, -0.0f}}).Print(out, 0, "");
              }),
              "matrix 1 x 3\n"
              "0.100000001 -inf -0 \n");
}

TEST(Matrix, PrintsAMatlabAssignment) {
    EXPECT_EQ(Text([](auto& out) { twoByTwo.PrintMatlabLike(out, 1, "m"); }),
              "% matrix 2 x 2\n"
              "m = [ ...\n"
              "1.0 -0.1 ; ...\n"
              "nan 1e+20 ; ...\n"
              "...\n"
              "]; \n");
    EXPECT_EQ(Text([](auto& out) { Filled<float>({{0.1f}}).PrintMatlabLike(out, "%.3e", ""); }),
              "% matrix 1 x 1\n"
              "[ ...\n"
              "1.000e-01 ; ...\n"
              "...\n"
              "]; \n");
}

TEST(Matrix, PrintsALatexEquationThatSaysNameForEveryName) {
    EXPECT_EQ(Text([](auto& out) { twoByTwo.PrintLatexLike(out, 1, "m"); }),
              "\\begin{equation}\n"
              "\\begin{pmatrix}\n"
              "name = \n"
              "\\begin{array}{cc}\n"
              "                     1.0  & -0.1  \\\\ \n"
              "\\noalign{\\smallskip} nan  & 1e+20  \\\\ \n"
              "\\end{array}\n"
              "\\end{pmatrix}\n"
              "\\end{equation}\n");
    EXPECT_EQ(Text([](auto& out) {
                  Filled<float>({{1.0f}, {2.0f}, {3.0f}}).PrintLatexLike(out, "%g", "");
              }),
              "\\begin{equation}\n"
              "\\begin{pmatrix}\n"
              "\\begin{array}{c}\n"
              "                     1  \\\\ \n"
              "\\noalign{\\smallskip} 2  \\\\ \n"
              "\\noalign{\\smallskip} 3  \\\\ \n"
              "\\end{array}\n"
              "\\end{pmatrix}\n"
              "\\end{equation}\n");
}

TEST(Matrix, PrecisionAndFormatApplyToEveryForm) {
    const Matrix<double> one = Filled<double>({{0.5}});
    for (const auto& text : {Text([&](auto& out) { one.Print(out, "<%.2f>", ""); }),
                             Text([&](auto& out) { one.PrintMatlabLike(out, "<%.2f>", ""); }),
                             Text([&](auto& out) { one.PrintLatexLike(out, "<%.2f>", ""); })})
        EXPECT_THAT(text, testing::HasSubstr("<0.50> "));
    EXPECT_THAT(Text([&](auto& out) { one.Print(out, "%.3f", ""); }), testing::HasSubstr("0.500 "));
}

TEST(Matrix, WithoutElementsPrintsItsFrame) {
    const Matrix<float> noRows(0, 2);
    EXPECT_EQ(Text([&](auto& out) { noRows.Print(out, 2, "m"); }), "matrix 0 x 2\nm = \n");
    EXPECT_EQ(Text([&](auto& out) { noRows.PrintMatlabLike(out, 2, "m"); }), "% matrix 0 x 2\nm = [ ...\n...\n]; \n");
    EXPECT_EQ(Text([&](auto& out) { noRows.PrintLatexLike(out, 2, ""); }),
              "\\begin{equation}\n\\begin{pmatrix}\n\\begin{array}{cc}\n"
              "\\end{array}\n\\end{pmatrix}\n\\end{equation}\n");
    EXPECT_EQ(Text([](auto& out) { Matrix<float>(2, 0).Print(out, 2, ""); }), "matrix 2 x 0\n\n\n");
}

TEST(Matrix, FlushesEveryLine) {
    FlushCounter counter;
    std::ostream stream(&counter);
    twoByTwo.PrintLatexLike(stream, 1, "m");
    EXPECT_EQ(counter.flushes, 9);
}

TEST(Matrix, ResizesToZeros) {
    Matrix<float> matrix = Filled<float>({{1, 2, 3}, {4, 5, 6}});
    EXPECT_EQ(matrix(1, 0), 4.0f);
    const float* elements = matrix.Data();
    matrix.Resize(2, 3);
    EXPECT_EQ(matrix.Data(), elements);
    EXPECT_EQ(matrix(1, 2), 6.0f);
    matrix.Resize(3, 2);
    EXPECT_THAT(std::vector<float>(matrix.Data(), matrix.Data() + 6), testing::Each(0.0f));
}

TEST(Matrix, MovesLeaveAnEmptyMatrix) {
    Matrix<float> source = Filled<float>({{1, 2}});
    Matrix<float> target(5, 5);
    target = std::move(source);
    EXPECT_EQ(target(0, 1), 2.0f);
    const Matrix<float> constructed(std::move(target));
    EXPECT_EQ(constructed(0, 1), 2.0f);
    EXPECT_EQ(target.GetNumRows() * target.GetNumColumns(), 0u);
}

TEST(Matrix, SizesBeyondTheAddressSpaceThrowAndLeaveItAsItWas) {
    constexpr unsigned long huge = std::numeric_limits<unsigned long>::max() / 2 + 2;  // times 2 wraps to 2
    Matrix<double> matrix = Filled<double>({{1, 2}});
    EXPECT_THAT(MessageOf([&] { matrix.Resize(2, huge); }), testing::StartsWith("out of memory occured in "));
    EXPECT_NE(MessageOf([&] { matrix.Resize(std::numeric_limits<unsigned long>::max(), 1); }), "nothing was thrown");
    EXPECT_EQ(matrix.GetNumColumns(), 2u);
    EXPECT_EQ(matrix(0, 1), 2.0);
}

TEST(Matrix, SaveAsLeavesAnEmptyFile) {
    const TempFolder folder;
    WriteBytes(folder / "old.txt", "something");
    EXPECT_TRUE(twoByTwo.SaveAs(File((folder / "old.txt").c_str()), 2, "m"));
    EXPECT_TRUE(twoByTwo.SaveAs(File((folder / "new.txt").c_str()), "%g", "m"));
    EXPECT_EQ(std::filesystem::file_size(folder / "old.txt"), 0u);
    EXPECT_EQ(std::filesystem::file_size(folder / "new.txt"), 0u);
    EXPECT_FALSE(twoByTwo.SaveAs(File((folder / "missing/new.txt").c_str()), 2, "m"));
}

}  // namespace
}  // namespace velmodsp
