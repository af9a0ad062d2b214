#pragma once

#include <iosfwd>

#include "math/VelmoDspVector.h"
#include "text/VelmoDspString.h"

namespace velmodsp {

class File;

/// Dense matrix of float or double, row after row: element (r, c) lies at `Data()[r * GetNumColumns() + c]`.
///
///     Matrix<double> gains(2, 3);                             // two rows of three zeros
///     gains(1, 2) = 0.5;
///     gains.PrintMatlabLike(std::cout, 2, "gains");           // two decimals
///     gains.SaveAsMatFile(File("~/gains.mat"), "gains", true);
///
/// Elements may be anything, NaN and infinity included. A matrix without rows or without columns is valid and keeps
/// both numbers.
///
/// The text forms come with a precision, the number of decimals, or with a format as `printf` has it, such as "%.3e":
/// each element is written as `String(element, precision)` or `String(element, format)` writes it. Numbers always have
/// "." as decimal separator, and neither the stream's locale nor its formatting flags change the text. Each line is
/// flushed.
///
/// Threads: one thread at a time. Constructors, `Resize`, copies and everything that prints or saves allocate; access
/// to elements and sizes is real-time safe.
template <typename T>
class Matrix {
public:
    /// No rows and no columns.
    Matrix() = default;
    /// All elements are 0.
    /// @throws Exception as `Resize`
    Matrix(unsigned long rows, unsigned long columns);
    Matrix(const Matrix&) = default;
    /// The other matrix is left without rows and columns.
    Matrix(Matrix&& other) noexcept;
    Matrix& operator=(Matrix other) noexcept;
    ~Matrix() = default;

    /// Gives the matrix this shape and sets all elements to 0. Does nothing when it has this shape already.
    /// @throws Exception when there is no memory for it; the matrix is then unchanged
    void Resize(unsigned long rows, unsigned long columns);

    unsigned long GetNumRows() const noexcept { return numRows; }
    unsigned long GetNumColumns() const noexcept { return numColumns; }

    /// @param row below `GetNumRows()`; not checked
    /// @param column below `GetNumColumns()`; not checked
    T& operator()(unsigned long row, unsigned long column) noexcept { return elements[row * numColumns + column]; }
    const T& operator()(unsigned long row, unsigned long column) const noexcept {
        return elements[row * numColumns + column];
    }

    /// The elements, row after row; null may stand for none.
    T* Data() noexcept { return elements.Data(); }
    const T* Data() const noexcept { return elements.Data(); }

    /// Writes a plain listing:
    ///
    ///     matrix 2 x 2
    ///     m =
    ///     1.00 2.00
    ///     3.00 4.00
    ///
    /// with a blank after each number and after the "="; without a name its line is left out.
    void Print(std::ostream& stream, unsigned int precision, const String& name = String()) const;
    void Print(std::ostream& stream, const String& format, const String& name = String()) const;

    /// Writes an assignment that can be pasted into Matlab, with "[ ..." alone in place of "m = [ ..." when there is
    /// no name:
    ///
    ///     % matrix 2 x 2
    ///     m = [ ...
    ///     1.00 2.00 ; ...
    ///     3.00 4.00 ; ...
    ///     ...
    ///     ];
    void PrintMatlabLike(std::ostream& stream, unsigned int precision, const String& name = String()) const;
    void PrintMatlabLike(std::ostream& stream, const String& format, const String& name = String()) const;

    /// Writes a LaTeX equation with the matrix in round brackets. A name that is not empty, whatever it is, shows as
    /// the word "name", to be replaced in the document by how the name is to be typeset.
    void PrintLatexLike(std::ostream& stream, unsigned int precision, const String& name = String()) const;
    void PrintLatexLike(std::ostream& stream, const String& format, const String& name = String()) const;

    /// Leaves an empty file at the path, whatever was there, and writes nothing into it: text goes to a stream.
    /// @return false when the file cannot be opened for writing
    bool SaveAs(const File& file, unsigned int precision, const String& name) const;
    bool SaveAs(const File& file, const String& format, const String& name) const;

    /// Writes a data file for Matlab with this matrix as its one variable; `MatFileWriter` writes several.
    /// @param overwrite whether an existing file goes to the trash; otherwise it is an error
    /// @return false when the file cannot be written; there is none then
    /// @throws Exception as `MatFileWriter::Write`
    bool SaveAsMatFile(const File& file, const String& name, bool overwrite) const;

private:
    unsigned long numRows = 0;
    unsigned long numColumns = 0;
    Vector<T> elements;
};

extern template class Matrix<float>;
extern template class Matrix<double>;

}  // namespace velmodsp
