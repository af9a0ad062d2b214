#pragma once

#include <cstdint>
#include <ostream>
#include <string>

#include "utils/VelmoDspCompilerChecks.h"

namespace velmodsp {

/// The library's text type: a byte string with value semantics and no notion of an encoding. Any byte may occur in it.
///
///     String path("/sounds/take.WAV");
///     String name = path.FromLastOccurrenceOf("/", false, false);   // "take.WAV"
///     name.MakeLowerCase();                                         // "take.wav"
///     String label = String("Channel #") + 3u;                      // "Channel #3"
///
/// Lengths and indices count bytes. Searches return the index of a hit, or -1 when nothing was found; an empty or null
/// text to search for is never found. `const char*` parameters are zero-terminated. Upper and lower case are those of
/// the C library's `toupper` and `tolower`, byte by byte; numbers always use "." as decimal separator.
/// Thread safety of a standard string; allocates, so not for the audio thread.
class String {
public:
    String() = default;
    /// @param text zero-terminated, not null
    String(const char* text);
    explicit String(const std::string& text);
    String(char character);
    /// Decimal, "-" before negative numbers.
    String(int number);
    String(unsigned int number);
    /// Up to nine significant digits, as `printf` writes "%.9g"; NaN is always "nan".
    String(float number);
    String(double number);
    /// Fixed point with `precision` decimals, rounded half away from zero. The sign of a negative number stays when all
    /// its digits round to 0: -0.001 with 2 decimals is "-0.00". A precision of 0, a magnitude of 1e20 or more, and NaN
    /// give the text that a number without precision has.
    String(float number, unsigned int precision);
    String(double number, unsigned int precision);
    /// "true" or "false".
    String(bool value);
    /// The number as `printf` writes it with `format`, which holds exactly one conversion, for a double.
    String(float number, const String& format);
    String(double number, const String& format);
    /// The number as `printf` writes it with `format`, which holds exactly one conversion, for an unsigned int.
    String(unsigned int number, const String& format);

    /// The bytes with a terminating zero; valid until the next change of this string.
    const char* C_Str() const { return bytes.c_str(); }
    std::string Str() const { return bytes; }
    unsigned long Length() const { return static_cast<unsigned long>(bytes.size()); }
    bool IsEmpty() const { return bytes.empty(); }
    /// @param index below `Length()`; not checked
    const char& operator[](unsigned long index) const { return bytes[index]; }

    /// Cuts the text to `size` bytes or lengthens it with `fill`.
    /// @throws Exception when there is no memory for it; likewise the three `Append`
    void Resize(unsigned long size, char fill);
    void Append(char character);
    void Append(const char* text);
    void Append(const String& text);

    void MakeLowerCase();
    void MakeUpperCase();
    /// Drops `n` bytes, or all when there are fewer.
    void RemoveFirstCharacters(unsigned int n);
    void RemoveLastCharacters(unsigned int n);
    /// Replaces every occurrence of `what`, left to right; the replacements are not searched again.
    /// No change when `what` is null or empty or `with` is null.
    void Replace(const char* what, const char* with);
    void RemoveAllOccurence(const char* text);
    /// Cuts away everything up to and including the first occurrence: "abc/def" without "/" is "def".
    void RemoveFirstOccurence(const char* text);
    void RemoveFirstOccurence(const String& text);
    /// Takes out the last occurrence alone; what stands before and after it stays.
    void RemoveLastOccurence(const char* text);
    /// Drops leading white space (that of `isspace`).
    void RemoveLeadingSpaces();
    void RemoveLeadingAndTrailingSpaces();

    /// The bytes from `start` to before `end`; empty when there are none.
    String SubString(unsigned long start, unsigned long end) const;
    String SubString(unsigned long start) const;
    /// From an occurrence of `text` to the end; empty when there is no occurrence.
    String FromFirstOccurrenceOf(const char* text, bool includeSubString, bool ignoreCase) const;
    String FromLastOccurrenceOf(const char* text, bool includeSubString, bool ignoreCase) const;
    /// From the start to an occurrence of `text`; empty when there is no occurrence.
    String UpToFirstOccurrenceOf(const char* text, bool includeSubString, bool ignoreCase) const;
    String UpToLastOccurrenceOf(const String& text, bool includeSubString, bool ignoreCase) const;
    /// A copy without the suffix, however often it stands at the end: "x///" without "/" is "x".
    String TrimCharactersAtEnd(const String& suffix) const;

    std::int64_t IndexOfFirstOccurence(const char* text, bool ignoreCase) const;
    /// Overlapping occurrences count: the last "aa" in "aaa" is at 1.
    std::int64_t IndexOfLastOccurence(const char* text, bool ignoreCase) const;
    std::int64_t IndexOfLastOccurence(char character, bool ignoreCase) const;
    bool StartsWith(char character) const { return !bytes.empty() && bytes.front() == character; }
    bool EndsWith(char character) const { return !bytes.empty() && bytes.back() == character; }

    /// Equality compares up to the first zero byte, as `strcmp` does.
    bool operator==(const String& other) const;
    bool operator==(const char* const& other) const;
    bool operator!=(const String& other) const { return !(*this == other); }
    bool operator!=(const char* other) const { return !(*this == other); }
    /// Order of all bytes, taken as unsigned; a text comes before its own continuations.
    /// @return below 0, 0 or above 0
    int Compare(const String& other) const { return bytes.compare(other.bytes); }
    bool operator<(const String& other) const { return Compare(other) < 0; }

    String operator+(const String& other) const;
    String operator+(const char* other) const;
    String operator+(char other) const;
    /// Appends the number in decimal.
    String operator+(unsigned int number) const;
    String operator+(unsigned long number) const;
    String operator+(unsigned long long number) const;
    friend String operator+(const char* left, const String& right);

    /// Writes the bytes, with the stream's width and fill.
    friend std::ostream& operator<<(std::ostream& stream, const String& text) { return stream << text.bytes; }

private:
    std::string bytes;
};

String operator+(const char* left, const String& right);

namespace Characters {

/// Value of a two-digit hexadecimal number, 0 to 255; -1 when one of the characters is no hexadecimal digit.
int HexaToInt(char high, char low);

}  // namespace Characters

namespace StringFormatting {

/// A frequency as people read it: "44.1 kHz", "48 kHz", "22050 Hz", "2.50 MHz", "1.00 GHz".
/// Below 1 MHz the Hz are cut to whole ones, not rounded; NaN reads as "44.1 kHz".
/// @param hz in Hz; `Float` is float or double
template <typename Float>
String FrequencyToString(Float hz);

}  // namespace StringFormatting

}  // namespace velmodsp
