#pragma once

#include <sstream>

#include "math/VelmoDspVector.h"
#include "text/VelmoDspString.h"

namespace velmodsp {

/// An ordered list of strings: file extensions, lines of a report, or the pieces of a text cut at a separator.
///
///     StringArray fields;
///     fields.SplitString("left,right", ",");   // "left", "right"
///
/// Not for the audio thread.
class StringArray {
public:
    StringArray() = default;
    StringArray(const StringArray&) = default;

    /// @throws Exception when there is no memory for it, naming the caller; likewise `Resize`
    StringArray& operator=(const StringArray& other);

    unsigned long Size() const { return strings.Size(); }
    /// @param index below `Size()`; not checked
    String& operator[](unsigned long index) { return strings[index]; }
    const String& operator[](unsigned long index) const { return strings[index]; }

    /// Grows with empty strings, or drops strings from the end.
    void Resize(unsigned long n);
    void Clear() { strings.Clear(); }
    void PushBack(const String& text) { strings.PushBack(text); }

    /// Cuts `text` at every occurrence of the whole `separator` and puts the pieces into `out`, at least one. Pieces
    /// may be empty, but a separator at the very end starts no further piece: "a,,b," gives "a", "", "b". An empty
    /// separator cuts nothing. `text` and `separator` may belong to `out`.
    /// @param text zero-terminated, not null
    static void SplitString(StringArray& out, const char* text, const String& separator);
    /// The same into this array, whose former storage is released.
    StringArray& SplitString(const char* text, const String& separator);
    StringArray& SplitString(const std::ostringstream& text, const String& separator);

private:
    Vector<String> strings;
};

}  // namespace velmodsp
