#pragma once

#include <cstdint>
#include <memory>

#include "files/VelmoDspFile.h"
#include "math/VelmoDspVector.h"
#include "text/VelmoDspString.h"

namespace velmodsp {

class FileWriter;
template <typename T>
class Matrix;

/// Writes matrices into a data file for Matlab: a MAT-file of level 5, little-endian and uncompressed, which Octave,
/// SciPy and many other programs read as well. Every bit of an element is kept, also of NaN, infinity and -0.
///
///     MatFileWriter writer(File("~/filter.mat"), true);
///     bool written = writer.Write("gains", gains) && writer.Write("impulse_response", response);
///
/// `load filter.mat` then gives the two variables, of class double or single like the matrices.
///
/// The file is opened by the first `Write`, once its variable has passed all checks, so that a wrong name does not cost
/// the file that was there before. After every `Write` the file is complete. One thread at a time; never the audio
/// thread.
class MatFileWriter {
public:
    /// @param overwrite whether an existing file goes to the trash at the first `Write`; otherwise it is an error there
    MatFileWriter(const File& file, bool overwrite);
    ~MatFileWriter();
    MatFileWriter(const MatFileWriter&) = delete;
    MatFileWriter& operator=(const MatFileWriter&) = delete;

    /// Appends a variable. The first one makes the file, and folders that are missing.
    /// @param name a letter, then letters, digits and underscores, 63 characters at most; not yet in this file
    /// @param matrix of less than 2^31 rows and columns, and of less than 2^31 bytes with what describes them
    /// @return false after this or an earlier write failed, as on a full disk; the file then holds the variables before
    /// it, and without any there is none
    /// @throws Exception that tells what is wrong with the variable, or which file is in the way; nothing is written
    bool Write(const String& name, const Matrix<float>& matrix);
    bool Write(const String& name, const Matrix<double>& matrix);

private:
    template <typename T>
    bool WriteVariable(const String& name, const Matrix<T>& matrix);
    void CheckName(const String& name) const;
    bool Open();
    void DropUnfinishedVariable(std::int64_t start);

    File file;
    bool overwrite;
    bool failed = false;
    Vector<String> names;                // of the variables written
    std::unique_ptr<FileWriter> output;  // null before the first variable and after a failure
};

}  // namespace velmodsp
