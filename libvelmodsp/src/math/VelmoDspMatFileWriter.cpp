#include "math/VelmoDspMatFileWriter.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <type_traits>

#include "files/VelmoDspFileWriter.h"
#include "math/VelmoDspMatrix.h"
#include "utils/VelmoDspException.h"

namespace velmodsp {
namespace {

static_assert(std::endian::native == std::endian::little, "elements are written as they lie in memory");

constexpr const char* MatFileWriterSource = "libvelmodsp/src/math/VelmoDspMatFileWriter";

constexpr unsigned long MaximumNameLength = 63;
constexpr std::uint64_t SizeLimit = std::uint64_t{1} << 31;  // of a variable's rows, columns and bytes
constexpr unsigned long ElementsPerBlock = 1ul << 18;

/// Type of the data behind a tag: the format's miINT8, miINT32, miUINT32, miSINGLE, miDOUBLE and miMATRIX.
enum class DataType : std::uint32_t { Int8 = 1, Int32 = 5, UnsignedInt32 = 6, Single = 7, Double = 9, Matrix = 14 };

/// Class of a variable: the format's mxDOUBLE_CLASS and mxSINGLE_CLASS.
enum class ArrayClass : std::uint32_t { Double = 6, Single = 7 };

template <typename T>
constexpr DataType DataTypeOf = std::is_same_v<T, float> ? DataType::Single : DataType::Double;
template <typename T>
constexpr ArrayClass ArrayClassOf = std::is_same_v<T, float> ? ArrayClass::Single : ArrayClass::Double;

/// Bytes of the tag, type and length, before `length` bytes of data. Up to four bytes share 8 bytes with their tag.
constexpr std::uint64_t TagSize(std::uint64_t length) { return length >= 1 && length <= 4 ? 4 : 8; }

constexpr std::uint64_t PaddingTo8(std::uint64_t length) { return (8 - length % 8) % 8; }

/// Zeros after `length` bytes of data.
constexpr std::uint64_t PaddingOf(std::uint64_t length) { return PaddingTo8(TagSize(length) + length); }

/// Bytes that `length` bytes of data take up in the file.
constexpr std::uint64_t SizeWithTag(std::uint64_t length) { return TagSize(length) + length + PaddingOf(length); }

template <typename T>
std::uint64_t LengthOfElements(const Matrix<T>& matrix) {
    return std::uint64_t{matrix.GetNumRows()} * matrix.GetNumColumns() * sizeof(T);
}

/// Part of a file in the making. It begins at a multiple of 8 bytes.
class Bytes {
public:
    const String& All() const { return bytes; }

    void Text(const String& text) { bytes.Append(text); }
    void FillTo(unsigned long length, char value) { bytes.Resize(length, value); }
    void PadTo8() { FillTo(bytes.Length() + static_cast<unsigned long>(PaddingTo8(bytes.Length())), '\0'); }
    void Little(std::uint64_t value, int count) {
        for (int i = 0; i < count; ++i) bytes.Append(static_cast<char>(value >> 8 * i));
    }
    void Tag(DataType type, std::uint64_t length) {
        const int bytesPerField = TagSize(length) == 4 ? 2 : 4;
        Little(static_cast<std::uint32_t>(type), bytesPerField);
        Little(length, bytesPerField);
    }

private:
    String bytes;
};

String FileHeader() {
    Bytes header;
    header.Text("MATLAB 5.0 MAT-file, written by velmodsp");
    header.FillTo(116, ' ');
    header.FillTo(124, '\0');          // no data of subsystems
    header.Little(0x0100, 2);          // version
    header.Little('M' << 8 | 'I', 2);  // tells readers the byte order
    return header.All();
}

/// The variable up to its first element.
template <typename T>
String VariableHeader(const String& name, const Matrix<T>& matrix) {
    const std::uint64_t rows = matrix.GetNumRows();
    const std::uint64_t columns = matrix.GetNumColumns();
    const std::uint64_t length = LengthOfElements(matrix);
    const std::uint64_t size = SizeWithTag(8) + SizeWithTag(8) + SizeWithTag(name.Length()) + SizeWithTag(length);
    if (rows >= SizeLimit || columns >= SizeLimit || size >= SizeLimit)
        throw Exception("Matrix too large for a Matlab file : " + name + " has " + matrix.GetNumRows() + " x " +
                            matrix.GetNumColumns() + " elements",
                        MatFileWriterSource, __LINE__, true, false);
    Bytes header;
    header.Tag(DataType::Matrix, size);
    header.Tag(DataType::UnsignedInt32, 8);
    header.Little(static_cast<std::uint32_t>(ArrayClassOf<T>), 8);  // neither complex nor global nor logical
    header.Tag(DataType::Int32, 8);
    header.Little(rows, 4);
    header.Little(columns, 4);
    header.Tag(DataType::Int8, name.Length());
    header.Text(name);
    header.PadTo8();
    header.Tag(DataTypeOf<T>, length);
    return header.All();
}

/// A rectangle of the matrix, column by column.
template <typename T>
void CopyColumns(const Matrix<T>& matrix, unsigned long firstRow, unsigned long rows, unsigned long firstColumn,
                 unsigned long columns, T* dest) {
    for (unsigned long row = 0; row < rows; ++row)
        for (unsigned long column = 0; column < columns; ++column)
            dest[column * rows + row] = matrix(firstRow + row, firstColumn + column);
}

/// All elements, column by column as Matlab has them. A block holds as many whole columns as fit, or a piece of one.
template <typename T>
bool WriteElements(FileWriter& output, const Matrix<T>& matrix, Vector<T>& block) {
    const unsigned long rowsPerBlock = std::min(matrix.GetNumRows(), block.Size());
    if (rowsPerBlock == 0) return true;
    const unsigned long columnsPerBlock = block.Size() / rowsPerBlock;
    for (unsigned long column = 0; column < matrix.GetNumColumns(); column += columnsPerBlock) {
        const unsigned long columns = std::min(columnsPerBlock, matrix.GetNumColumns() - column);
        for (unsigned long row = 0; row < matrix.GetNumRows(); row += rowsPerBlock) {
            const unsigned long rows = std::min(rowsPerBlock, matrix.GetNumRows() - row);
            CopyColumns(matrix, row, rows, column, columns, block.Data());
            if (!output.Write(block.Data(), rows * columns * sizeof(T))) return false;
        }
    }
    return true;
}

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool IsVariableName(const String& name) {
    if (name.IsEmpty() || name.Length() > MaximumNameLength || !IsLetter(name[0])) return false;
    const std::string characters = name.Str();
    return std::all_of(characters.begin(), characters.end(),
                       [](char c) { return IsLetter(c) || (c >= '0' && c <= '9') || c == '_'; });
}

}  // namespace

MatFileWriter::MatFileWriter(const File& matFile, bool overwriteFile) : file(matFile), overwrite(overwriteFile) {}

MatFileWriter::~MatFileWriter() = default;

bool MatFileWriter::Write(const String& name, const Matrix<float>& matrix) { return WriteVariable(name, matrix); }

bool MatFileWriter::Write(const String& name, const Matrix<double>& matrix) { return WriteVariable(name, matrix); }

void MatFileWriter::CheckName(const String& name) const {
    if (!IsVariableName(name))
        throw Exception("Invalid name for a Matlab variable : \"" + name +
                            "\" (a letter, then letters, digits and underscores, 63 characters at most)",
                        MatFileWriterSource, __LINE__, true, false);
    if (std::find(names.begin(), names.end(), name) != names.end())
        throw Exception("Variable " + name + " is already in file : " + file.GetFullPathName(), MatFileWriterSource,
                        __LINE__, true, false);
}

bool MatFileWriter::Open() {
    if (output == nullptr && file.OverwriteIfNeeded(overwrite)) output = std::make_unique<FileWriter>(file);
    return output != nullptr;
}

template <typename T>
bool MatFileWriter::WriteVariable(const String& name, const Matrix<T>& matrix) {
    CheckName(name);
    String header = VariableHeader(name, matrix);
    if (output == nullptr) header = FileHeader() + header;
    // All memory is there before the first byte is written.
    Vector<T> block;
    ResizeVector(block, std::min(matrix.GetNumRows() * matrix.GetNumColumns(), ElementsPerBlock));
    if (failed || !Open()) return false;
    names.PushBack(name);

    const std::int64_t start = output->GetPosition();
    failed = !(output->Write(header.C_Str(), header.Length()) && WriteElements(*output, matrix, block) &&
               output->WriteRepeatedByte(0, PaddingOf(LengthOfElements(matrix))));
    if (failed) DropUnfinishedVariable(start);
    return !failed;
}

void MatFileWriter::DropUnfinishedVariable(std::int64_t start) {
    if (output->SetPosition(static_cast<std::uint64_t>(start))) output->Truncate();
    output.reset();
    if (start == 0) file.DeleteFile();
}

}  // namespace velmodsp
