// String and StringArray, each operation against what std::string and plain loops make of the same bytes.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <sstream>

#include "Fuzzing.h"
#include "text/VelmoDspString.h"
#include "text/VelmoDspStringArray.h"

using velmodsp::String;
using velmodsp::StringArray;

namespace {

void RequireText(const String& text, const std::string& expected, const char* promise) {
    Require(
        text.Str() == expected && text.Length() == expected.size() && std::strcmp(text.C_Str(), expected.c_str()) == 0,
        promise);
}

template <class Change>
String Changed(const std::string& text, const Change& change) {
    String changed(text);
    change(changed);
    return changed;
}

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// All positions at which the text has the word, overlapping ones included.
std::vector<std::size_t> Occurrences(const std::string& text, const std::string& word, bool ignoreCase) {
    std::vector<std::size_t> positions;
    for (std::size_t i = 0; !word.empty() && i + word.size() <= text.size(); ++i) {
        const bool isHere =
            std::equal(word.begin(), word.end(), text.begin() + static_cast<std::ptrdiff_t>(i),
                       [ignoreCase](char a, char b) { return ignoreCase ? Lower(a) == Lower(b) : a == b; });
        if (isHere) positions.push_back(i);
    }
    return positions;
}

void CheckSearches(const std::string& text, const std::string& word, bool ignoreCase) {
    const String string(text);
    const std::vector<std::size_t> hits = Occurrences(text, word, ignoreCase);
    const std::int64_t first = hits.empty() ? -1 : static_cast<std::int64_t>(hits.front());
    const std::int64_t last = hits.empty() ? -1 : static_cast<std::int64_t>(hits.back());
    Require(string.IndexOfFirstOccurence(word.c_str(), ignoreCase) == first, "the first occurrence is found");
    Require(string.IndexOfLastOccurence(word.c_str(), ignoreCase) == last, "the last occurrence is found");
    for (const bool include : {false, true}) {
        const std::size_t skipped = include ? 0 : word.size(), kept = include ? word.size() : 0;
        RequireText(string.FromFirstOccurrenceOf(word.c_str(), include, ignoreCase),
                    hits.empty() ? "" : text.substr(hits.front() + skipped), "from the first occurrence");
        RequireText(string.FromLastOccurrenceOf(word.c_str(), include, ignoreCase),
                    hits.empty() ? "" : text.substr(hits.back() + skipped), "from the last occurrence");
        RequireText(string.UpToFirstOccurrenceOf(word.c_str(), include, ignoreCase),
                    hits.empty() ? "" : text.substr(0, hits.front() + kept), "up to the first occurrence");
        RequireText(string.UpToLastOccurrenceOf(String(word), include, ignoreCase),
                    hits.empty() ? "" : text.substr(0, hits.back() + kept), "up to the last occurrence");
    }
    const char character = word.empty() ? 'a' : word.front();
    std::int64_t lastCharacter = -1;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isHit = ignoreCase ? Lower(text[i]) == Lower(character) : text[i] == character;
        if (isHit) lastCharacter = static_cast<std::int64_t>(i);
    }
    Require(string.IndexOfLastOccurence(character, ignoreCase) == lastCharacter, "the last character is found");
    Require(string.StartsWith(character) == (!text.empty() && text[0] == character), "StartsWith");
    Require(string.EndsWith(character) == (!text.empty() && text[text.size() - 1] == character), "EndsWith");
}

/// The text cut at every occurrence of the separator, which do not overlap.
std::vector<std::string> CutAt(const std::string& text, const std::string& separator) {
    std::vector<std::string> pieces{""};
    for (std::size_t i = 0; i < text.size();) {
        if (!separator.empty() && text.compare(i, separator.size(), separator) == 0) {
            pieces.emplace_back();
            i += separator.size();
        } else {
            pieces.back() += text[i++];
        }
    }
    return pieces;
}

std::string Joined(const std::vector<std::string>& pieces, const std::string& glue) {
    std::string text;
    for (std::size_t i = 0; i < pieces.size(); ++i) text += (i > 0 ? glue : "") + pieces[i];
    return text;
}

void CheckReplacing(const std::string& text, const std::string& word, const std::string& with) {
    const auto replace = [&](String& s) { s.Replace(word.c_str(), with.c_str()); };
    RequireText(Changed(text, replace), Joined(CutAt(text, word), with), "Replace");
    const auto removeAll = [&](String& s) { s.RemoveAllOccurence(word.c_str()); };
    RequireText(Changed(text, removeAll), Joined(CutAt(text, word), ""), "RemoveAllOccurence");

    const std::vector<std::size_t> hits = Occurrences(text, word, false);
    const std::string afterFirst = hits.empty() ? text : text.substr(hits.front() + word.size());
    RequireText(Changed(text, [&](String& s) { s.RemoveFirstOccurence(word.c_str()); }), afterFirst, "RemoveFirst");
    RequireText(Changed(text, [&](String& s) { s.RemoveFirstOccurence(String(word)); }), afterFirst, "RemoveFirst");
    const std::string withoutLast =
        hits.empty() ? text : text.substr(0, hits.back()) + text.substr(hits.back() + word.size());
    RequireText(Changed(text, [&](String& s) { s.RemoveLastOccurence(word.c_str()); }), withoutLast, "RemoveLast");
}

void CheckCutting(const std::string& text, const std::string& suffix, std::uint64_t a, std::uint64_t b) {
    const String string(text);
    std::string inRange, fromStart, front, back, lower, upper;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i >= a && i < b) inRange += text[i];
        if (i >= a) fromStart += text[i];
        if (i >= static_cast<unsigned>(a)) front += text[i];
        if (text.size() - i > static_cast<unsigned>(a)) back += text[i];
        lower += Lower(text[i]);
        upper += Upper(text[i]);
    }
    RequireText(string.SubString(a, b), inRange, "SubString of a range");
    RequireText(string.SubString(a), fromStart, "SubString to the end");
    const auto n = static_cast<unsigned>(a);
    RequireText(Changed(text, [n](String& s) { s.RemoveFirstCharacters(n); }), front, "RemoveFirstCharacters");
    RequireText(Changed(text, [n](String& s) { s.RemoveLastCharacters(n); }), back, "RemoveLastCharacters");
    RequireText(Changed(text, [](String& s) { s.MakeLowerCase(); }), lower, "MakeLowerCase");
    RequireText(Changed(text, [](String& s) { s.MakeUpperCase(); }), upper, "MakeUpperCase");

    std::string trimmed = text;
    while (!trimmed.empty() && IsSpace(trimmed.front())) trimmed.erase(0, 1);
    RequireText(Changed(text, [](String& s) { s.RemoveLeadingSpaces(); }), trimmed, "RemoveLeadingSpaces");
    while (!trimmed.empty() && IsSpace(trimmed.back())) trimmed.pop_back();
    RequireText(Changed(text, [](String& s) { s.RemoveLeadingAndTrailingSpaces(); }), trimmed, "trimming");

    std::string untilOther = text;
    while (!suffix.empty() && untilOther.ends_with(suffix)) untilOther.resize(untilOther.size() - suffix.size());
    RequireText(string.TrimCharactersAtEnd(String(suffix)), untilOther, "TrimCharactersAtEnd");

    std::string resized = text;
    resized.resize(b % 512, 'x');
    RequireText(Changed(text, [b](String& s) { s.Resize(b % 512, 'x'); }), resized, "Resize");
}

void CheckComparing(const std::string& a, const std::string& b) {
    const String left(a), right(b);
    const auto byBytes = [](char x, char y) { return static_cast<unsigned char>(x) < static_cast<unsigned char>(y); };
    const bool isLess = std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), byBytes);
    const bool isGreater = std::lexicographical_compare(b.begin(), b.end(), a.begin(), a.end(), byBytes);
    Require((left < right) == isLess && (left.Compare(right) < 0) == isLess && (left.Compare(right) > 0) == isGreater,
            "order of bytes");
    const bool isEqual = std::string(a.c_str()) == b.c_str();  // up to the first zero byte
    Require((left == right) == isEqual && (left != right) != isEqual, "equality");
    Require((left == b.c_str()) == isEqual && (left != b.c_str()) != isEqual, "equality");

    RequireText(left + right, a + b, "+");
    RequireText(left + b.c_str(), a + b.c_str(), "+");
    RequireText(a.c_str() + right, a.c_str() + b, "+");
    RequireText(Changed(a, [&](String& s) { s.Append(right); }), a + b, "Append");
    RequireText(Changed(a, [&](String& s) { s.Append(b.c_str()); }), a + b.c_str(), "Append");
    RequireText(Changed(a, [&](String& s) { s.Append(s); }), a + a, "Append of itself");
    std::ostringstream stream;
    stream << left;
    Require(stream.str() == a, "<<");
}

void CheckSplitting(const std::string& text, const std::string& separator) {
    const std::string read = text.c_str();  // the text ends at its first zero byte
    std::vector<std::string> pieces = CutAt(read, separator);
    if (pieces.size() > 1 && pieces.back().empty()) pieces.pop_back();
    StringArray split;
    split.Resize(3);
    split.SplitString(text.c_str(), String(separator));
    Require(split.Size() == pieces.size(), "number of pieces");
    for (unsigned long i = 0; i < split.Size(); ++i) RequireText(split[i], pieces[i], "piece");

    StringArray copy;
    copy.PushBack(String("old"));
    copy = split;
    split.Clear();
    Require(split.Size() == 0 && copy.Size() == pieces.size(), "a copy is a copy");
    for (unsigned long i = 0; i < copy.Size(); ++i) RequireText(copy[i], pieces[i], "copied piece");
}

std::string Printed(const char* format, auto value) {
    char text[512];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

void CheckNumbers(double number, unsigned integer, unsigned precision) {
    RequireText(String(static_cast<int>(integer)), Printed("%d", static_cast<int>(integer)), "int");
    RequireText(String(integer), Printed("%u", integer), "unsigned int");
    RequireText(String("a") + integer, "a" + Printed("%u", integer), "+ number");
    const std::string general = std::isnan(number) ? "nan" : Printed("%.9g", number);
    RequireText(String(number), general, "number without precision");
    if (!(std::abs(number) < 1e20) || precision == 0) {
        RequireText(String(number, precision), general, "number without decimals");
        return;
    }
    const std::string text = String(number, precision).Str();
    const std::size_t point = text.find('.');
    Require(point != std::string::npos && text.size() - point - 1 == precision, "as many decimals as asked for");
    Require((text.front() == '-') == (number < 0), "sign of the number");
    // Half a unit of the last decimal, and what the double itself leaves open.
    const double tolerance = 0.5000001 * std::pow(10.0, -static_cast<double>(precision)) + std::abs(number) * 4e-16;
    Require(std::abs(std::strtod(text.c_str(), nullptr) - number) <= tolerance, "the nearest decimal number");
}

void CheckFrequency(double hz) {
    const std::string text = velmodsp::StringFormatting::FrequencyToString(hz).Str();
    if (std::isnan(hz)) return Require(text == "44.1 kHz", "no frequency");
    std::size_t unit = 0;
    if (!std::isfinite(hz)) return;
    const double shown = std::stod(text, &unit);
    const std::string name = text.substr(unit);
    const double factor = name == " Hz" ? 1 : name == " kHz" ? 1e3 : name == " MHz" ? 1e6 : name == " GHz" ? 1e9 : 0;
    const double step = factor < 1e6 ? 1.0 : 0.00501 * factor;
    Require(factor > 0 && std::abs(shown * factor - hz) <= step + std::abs(hz) * 1e-12, "a frequency is itself");
}

void CheckHexadecimal(char high, char low) {
    const char digits[] = {high, low, '\0'};
    const std::string allowed = "0123456789abcdefABCDEF";
    const bool isNumber = high != '\0' && low != '\0' && std::strspn(digits, allowed.c_str()) == 2;
    Require(velmodsp::Characters::HexaToInt(high, low) == (isNumber ? std::strtol(digits, nullptr, 16) : -1),
            "value of a hexadecimal number");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const bool ignoreCase = input.ConsumeBool();
    const auto number = std::bit_cast<double>(input.ConsumeIntegral<std::uint64_t>());
    const auto precision = input.ConsumeIntegralInRange(0u, 30u);
    const auto start = input.ConsumeIntegral<std::uint8_t>();
    const auto end =
        input.ConsumeBool() ? input.ConsumeIntegral<std::uint64_t>() : input.ConsumeIntegral<std::uint8_t>();
    const std::vector<std::string> lines = TakeLines(input);
    const auto line = [&](std::size_t i) { return i < lines.size() ? lines[i] : std::string(); };
    const std::string text = line(0), word = line(1).c_str(), with = line(2).c_str();

    CheckSearches(text, word, ignoreCase);
    CheckReplacing(text, word, with);
    CheckCutting(text, line(1), start, end);
    CheckComparing(text, line(1));
    CheckComparing(text, line(3));
    CheckSplitting(text, line(1));
    CheckNumbers(number, static_cast<unsigned>(end), precision);
    CheckFrequency(number);
    CheckHexadecimal(static_cast<char>(start), static_cast<char>(end));
    return 0;
}
