#include "math/VelmoDspMatrix.h"

#include <limits>
#include <new>
#include <ostream>
#include <utility>

#include "files/VelmoDspFile.h"
#include "math/VelmoDspMatFileWriter.h"
#include "platform/VelmoDspFileSystem.h"
#include "utils/VelmoDspGuardedAllocation.h"

namespace velmodsp {
namespace {

/// @throws std::bad_alloc when the product does not fit, as no memory would
unsigned long CountElements(unsigned long rows, unsigned long columns) {
    if (columns != 0 && rows > std::numeric_limits<unsigned long>::max() / columns) throw std::bad_alloc();
    return rows * columns;
}

/// The text as it is: formatted output would apply the stream's width and fill to it.
std::ostream& WriteText(std::ostream& stream, const String& text) {
    return stream.write(text.C_Str(), static_cast<std::streamsize>(text.Length()));
}

void WriteLine(std::ostream& stream, const String& text) { WriteText(stream, text) << std::endl; }

template <typename T>
String Shape(const Matrix<T>& matrix) {
    return String("matrix ") + matrix.GetNumRows() + " x " + matrix.GetNumColumns();
}

/// Each element of a row with a blank after it. `Form` is a precision or a format.
template <typename T, typename Form>
String RowText(const Matrix<T>& matrix, unsigned long row, const Form& form) {
    String text;
    for (unsigned long column = 0; column < matrix.GetNumColumns(); ++column) {
        text.Append(String(matrix(row, column), form));
        text.Append(' ');
    }
    return text;
}

template <typename T, typename Form>
void WritePlain(std::ostream& stream, const Matrix<T>& matrix, const Form& form, const String& name) {
    WriteLine(stream, Shape(matrix));
    if (!name.IsEmpty()) WriteLine(stream, name + " = ");
    for (unsigned long row = 0; row < matrix.GetNumRows(); ++row) WriteLine(stream, RowText(matrix, row, form));
}

template <typename T, typename Form>
void WriteMatlabLike(std::ostream& stream, const Matrix<T>& matrix, const Form& form, const String& name) {
    WriteLine(stream, "% " + Shape(matrix));
    WriteLine(stream, name.IsEmpty() ? String("[ ...") : name + " = [ ...");
    for (unsigned long row = 0; row < matrix.GetNumRows(); ++row)
        WriteLine(stream, RowText(matrix, row, form) + "; ...");
    WriteLine(stream, "...");
    WriteLine(stream, "]; ");
}

/// The last element ends the line, so a row without elements has no end of line.
template <typename T, typename Form>
void WriteLatexRow(std::ostream& stream, const Matrix<T>& matrix, unsigned long row, const Form& form) {
    WriteText(stream, row == 0 ? "                     " : "\\noalign{\\smallskip} ");
    for (unsigned long column = 0; column < matrix.GetNumColumns(); ++column) {
        WriteText(stream, String(matrix(row, column), form) + " ");
        if (column + 1 < matrix.GetNumColumns())
            WriteText(stream, " & ");
        else
            WriteLine(stream, " \\\\ ");
    }
}

template <typename T, typename Form>
void WriteLatexLike(std::ostream& stream, const Matrix<T>& matrix, const Form& form, const String& name) {
    WriteLine(stream, "\\begin{equation}");
    WriteLine(stream, "\\begin{pmatrix}");
    if (!name.IsEmpty()) WriteLine(stream, "name = ");
    String columns;
    columns.Resize(matrix.GetNumColumns(), 'c');
    WriteLine(stream, "\\begin{array}{" + columns + "}");
    for (unsigned long row = 0; row < matrix.GetNumRows(); ++row) WriteLatexRow(stream, matrix, row, form);
    for (const char* end : {"\\end{array}", "\\end{pmatrix}", "\\end{equation}"}) WriteLine(stream, end);
}

bool MakeEmptyFile(const String& path) {
    const int descriptor = FileSystem::CreateForWriting(path);
    if (descriptor < 0) return false;
    const bool emptied = FileSystem::SetSize(descriptor, 0);
    FileSystem::Close(descriptor);
    return emptied;
}

}  // namespace

template <typename T>
Matrix<T>::Matrix(unsigned long rows, unsigned long columns) {
    Resize(rows, columns);
}

template <typename T>
Matrix<T>::Matrix(Matrix&& other) noexcept
    : numRows(std::exchange(other.numRows, 0)),
      numColumns(std::exchange(other.numColumns, 0)),
      elements(std::move(other.elements)) {}

template <typename T>
Matrix<T>& Matrix<T>::operator=(Matrix other) noexcept {
    std::swap(numRows, other.numRows);
    std::swap(numColumns, other.numColumns);
    std::swap(elements, other.elements);
    return *this;
}

template <typename T>
[[gnu::noinline]] void Matrix<T>::Resize(unsigned long rows, unsigned long columns) {
    if (rows == numRows && columns == numColumns) return;
    GuardGrowth([&] { elements = Vector<T>(CountElements(rows, columns)); });
    numRows = rows;
    numColumns = columns;
}

template <typename T>
void Matrix<T>::Print(std::ostream& stream, unsigned int precision, const String& name) const {
    WritePlain(stream, *this, precision, name);
}

template <typename T>
void Matrix<T>::Print(std::ostream& stream, const String& format, const String& name) const {
    WritePlain(stream, *this, format, name);
}

template <typename T>
void Matrix<T>::PrintMatlabLike(std::ostream& stream, unsigned int precision, const String& name) const {
    WriteMatlabLike(stream, *this, precision, name);
}

template <typename T>
void Matrix<T>::PrintMatlabLike(std::ostream& stream, const String& format, const String& name) const {
    WriteMatlabLike(stream, *this, format, name);
}

template <typename T>
void Matrix<T>::PrintLatexLike(std::ostream& stream, unsigned int precision, const String& name) const {
    WriteLatexLike(stream, *this, precision, name);
}

template <typename T>
void Matrix<T>::PrintLatexLike(std::ostream& stream, const String& format, const String& name) const {
    WriteLatexLike(stream, *this, format, name);
}

template <typename T>
bool Matrix<T>::SaveAs(const File& file, unsigned int, const String&) const {
    return MakeEmptyFile(file.GetFullPathName());
}

template <typename T>
bool Matrix<T>::SaveAs(const File& file, const String&, const String&) const {
    return MakeEmptyFile(file.GetFullPathName());
}

template <typename T>
bool Matrix<T>::SaveAsMatFile(const File& file, const String& name, bool overwrite) const {
    return MatFileWriter(file, overwrite).Write(name, *this);
}

template class Matrix<float>;
template class Matrix<double>;

}  // namespace velmodsp
