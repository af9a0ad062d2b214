#include "text/VelmoDspString.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <exception>

#include "platform/VelmoDspClassicLocale.h"
#include "utils/VelmoDspException.h"

namespace velmodsp {
namespace {

constexpr const char* stringSource = "libvelmodsp/src/text/VelmoDspString";

/// Room for every usual number; longer ones are written again into a buffer of their length.
constexpr std::size_t numberBufferSize = 48;

char ToLower(char character) { return static_cast<char>(std::tolower(static_cast<unsigned char>(character))); }
char ToUpper(char character) { return static_cast<char>(std::toupper(static_cast<unsigned char>(character))); }
bool IsSpace(char character) { return std::isspace(static_cast<unsigned char>(character)) != 0; }

std::string Lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), ToLower);
    return text;
}

template <typename Number>
std::string Formatted(const char* format, Number number) {
    const ScopedClassicLocale locale;
    char buffer[numberBufferSize];
    const int length = std::snprintf(buffer, sizeof buffer, format, number);
    if (length < 0) return {};
    const auto size = static_cast<std::size_t>(length);
    if (size < sizeof buffer) return {buffer, size};
    std::string text(size, '\0');
    std::snprintf(text.data(), size + 1, format, number);
    return text;
}

std::string GeneralFormat(double number) { return std::isnan(number) ? "nan" : Formatted("%.9g", number); }

/// `scaled` = the magnitude times 10^precision, rounded to a whole number.
std::string FixedPointDigits(std::int64_t scaled, unsigned int precision) {
    std::string digits = std::to_string(scaled);
    if (digits.size() <= precision) digits.insert(0, precision + 1 - digits.size(), '0');
    return digits.insert(digits.size() - precision, 1, '.');
}

std::string FixedPoint(double number, unsigned int precision) {
    if (precision < 1 || !(number > -1e20) || number >= 1e20) return GeneralFormat(number);
    const double scaled = std::abs(number) * std::pow(10.0, precision) + 0.5;
    // Beyond the range of the whole number the decimals are no longer in the double anyway: let printf write it.
    if (scaled >= 0x1p63) return Formatted(("%." + std::to_string(precision) + "f").c_str(), number);
    const std::string digits = FixedPointDigits(static_cast<std::int64_t>(scaled), precision);
    return number >= 0.0 ? digits : "-" + digits;
}

std::int64_t ToIndex(std::size_t position) {
    return position == std::string::npos ? -1 : static_cast<std::int64_t>(position);
}

bool IsNullOrEmpty(const char* text) { return text == nullptr || *text == '\0'; }

int HexaDigit(char digit) {
    if (digit >= '0' && digit <= '9') return digit - '0';
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
    if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
    return -1;
}

/// `change` lengthens a string; what that throws is reported with this file and `line`.
template <typename Change>
void GuardChange(unsigned long line, const Change& change) {
    try {
        change();
    } catch (const Exception&) {
        throw;
    } catch (const std::exception& cause) {
        throw Exception(cause, stringSource, line, true, false);
    }
}

}  // namespace

String::String(const char* text) : bytes(text) {}
String::String(const std::string& text) : bytes(text) {}
String::String(char character) : bytes(1, character) {}
String::String(int number) : bytes(std::to_string(number)) {}
String::String(unsigned int number) : bytes(std::to_string(number)) {}
String::String(float number) : String(number, 0) {}
String::String(double number) : String(number, 0) {}
String::String(float number, unsigned int precision) : String(static_cast<double>(number), precision) {}
String::String(double number, unsigned int precision) : bytes(FixedPoint(number, precision)) {}
String::String(bool value) : bytes(value ? "true" : "false") {}
String::String(float number, const String& format) : String(static_cast<double>(number), format) {}
String::String(double number, const String& format) : bytes(Formatted(format.C_Str(), number)) {}
String::String(unsigned int number, const String& format) : bytes(Formatted(format.C_Str(), number)) {}

void String::Resize(unsigned long size, char fill) {
    GuardChange(__LINE__, [&] { bytes.resize(size, fill); });
}

void String::Append(char character) {
    GuardChange(__LINE__, [&] { bytes.push_back(character); });
}

void String::Append(const char* text) {
    GuardChange(__LINE__, [&] { bytes.append(text); });
}

void String::Append(const String& text) {
    GuardChange(__LINE__, [&] { bytes.append(text.bytes); });
}

void String::MakeLowerCase() { std::transform(bytes.begin(), bytes.end(), bytes.begin(), ToLower); }

void String::MakeUpperCase() { std::transform(bytes.begin(), bytes.end(), bytes.begin(), ToUpper); }

void String::RemoveFirstCharacters(unsigned int n) { bytes.erase(0, n); }

void String::RemoveLastCharacters(unsigned int n) {
    bytes.resize(bytes.size() - std::min<std::size_t>(n, bytes.size()));
}

void String::Replace(const char* what, const char* with) {
    if (IsNullOrEmpty(what) || with == nullptr) return;
    const std::size_t length = std::strlen(what);
    std::string replaced;
    std::size_t start = 0;
    for (std::size_t hit; (hit = bytes.find(what, start, length)) != std::string::npos; start = hit + length) {
        replaced.append(bytes, start, hit - start).append(with);
    }
    bytes = replaced.append(bytes, start);
}

void String::RemoveAllOccurence(const char* text) { Replace(text, ""); }

void String::RemoveFirstOccurence(const char* text) {
    const std::int64_t index = IndexOfFirstOccurence(text, false);
    if (index >= 0) bytes.erase(0, static_cast<std::size_t>(index) + std::strlen(text));
}

void String::RemoveFirstOccurence(const String& text) { RemoveFirstOccurence(text.C_Str()); }

void String::RemoveLastOccurence(const char* text) {
    const std::int64_t index = IndexOfLastOccurence(text, false);
    if (index >= 0) bytes.erase(static_cast<std::size_t>(index), std::strlen(text));
}

void String::RemoveLeadingSpaces() {
    bytes.erase(bytes.begin(), std::find_if_not(bytes.begin(), bytes.end(), IsSpace));
}

void String::RemoveLeadingAndTrailingSpaces() {
    RemoveLeadingSpaces();
    bytes.erase(std::find_if_not(bytes.rbegin(), bytes.rend(), IsSpace).base(), bytes.end());
}

String String::SubString(unsigned long start, unsigned long end) const {
    if (end <= start || start >= bytes.size()) return {};
    return String(bytes.substr(start, end - start));
}

String String::SubString(unsigned long start) const {
    return start >= bytes.size() ? String() : String(bytes.substr(start));
}

String String::FromFirstOccurrenceOf(const char* text, bool includeSubString, bool ignoreCase) const {
    const std::int64_t index = IndexOfFirstOccurence(text, ignoreCase);
    if (index < 0) return {};
    return String(bytes.substr(static_cast<std::size_t>(index) + (includeSubString ? 0 : std::strlen(text))));
}

String String::FromLastOccurrenceOf(const char* text, bool includeSubString, bool ignoreCase) const {
    const std::int64_t index = IndexOfLastOccurence(text, ignoreCase);
    if (index < 0) return {};
    return String(bytes.substr(static_cast<std::size_t>(index) + (includeSubString ? 0 : std::strlen(text))));
}

String String::UpToFirstOccurrenceOf(const char* text, bool includeSubString, bool ignoreCase) const {
    const std::int64_t index = IndexOfFirstOccurence(text, ignoreCase);
    if (index < 0) return {};
    return String(bytes.substr(0, static_cast<std::size_t>(index) + (includeSubString ? std::strlen(text) : 0)));
}

String String::UpToLastOccurrenceOf(const String& text, bool includeSubString, bool ignoreCase) const {
    const std::int64_t index = IndexOfLastOccurence(text.C_Str(), ignoreCase);
    if (index < 0) return {};
    return String(
        bytes.substr(0, static_cast<std::size_t>(index) + (includeSubString ? std::strlen(text.C_Str()) : 0)));
}

String String::TrimCharactersAtEnd(const String& suffix) const {
    if (suffix.IsEmpty()) return *this;
    std::size_t length = bytes.size();
    const std::size_t step = suffix.bytes.size();
    while (length >= step && bytes.compare(length - step, step, suffix.bytes) == 0) length -= step;
    return String(bytes.substr(0, length));
}

std::int64_t String::IndexOfFirstOccurence(const char* text, bool ignoreCase) const {
    if (IsNullOrEmpty(text)) return -1;
    return ToIndex(ignoreCase ? Lowered(bytes).find(Lowered(text)) : bytes.find(text));
}

std::int64_t String::IndexOfLastOccurence(const char* text, bool ignoreCase) const {
    if (IsNullOrEmpty(text)) return -1;
    return ToIndex(ignoreCase ? Lowered(bytes).rfind(Lowered(text)) : bytes.rfind(text));
}

std::int64_t String::IndexOfLastOccurence(char character, bool ignoreCase) const {
    return ToIndex(ignoreCase ? Lowered(bytes).rfind(ToLower(character)) : bytes.rfind(character));
}

bool String::operator==(const String& other) const { return *this == other.C_Str(); }

bool String::operator==(const char* const& other) const { return std::strcmp(C_Str(), other) == 0; }

String String::operator+(const String& other) const { return String(bytes + other.bytes); }

String String::operator+(const char* other) const { return String(bytes + other); }

String String::operator+(char other) const { return String(bytes + other); }

String String::operator+(unsigned int number) const { return String(bytes + std::to_string(number)); }

String String::operator+(unsigned long number) const { return String(bytes + std::to_string(number)); }

String String::operator+(unsigned long long number) const { return String(bytes + std::to_string(number)); }

String operator+(const char* left, const String& right) { return String(left + right.bytes); }

namespace Characters {

int HexaToInt(char high, char low) {
    const int sixteens = HexaDigit(high);
    const int ones = HexaDigit(low);
    return sixteens < 0 || ones < 0 ? -1 : sixteens * 16 + ones;
}

}  // namespace Characters

namespace StringFormatting {
namespace {

/// The integer part, cut towards zero, of a number of any size.
String WholePart(double number) {
    return String(std::trunc(number) + 0.0, "%.0f");  // + 0.0 turns -0 into 0
}

}  // namespace

template <typename Float>
String FrequencyToString(Float hz) {
    const double frequency = static_cast<double>(hz);
    if (frequency == 44100.0 || std::isnan(frequency)) return "44.1 kHz";
    if (frequency < 1e3) return WholePart(frequency) + " Hz";
    if (frequency >= 1e9) return String(frequency * 1e-9, "%.2f") + " GHz";
    if (frequency >= 1e6) return String(frequency * 1e-6, "%.2f") + " MHz";
    const double kilohertz = 0.001 * frequency;
    if (std::trunc(kilohertz) == kilohertz) return WholePart(kilohertz) + " kHz";
    return WholePart(frequency) + " Hz";
}

template String FrequencyToString<float>(float hz);
template String FrequencyToString<double>(double hz);

}  // namespace StringFormatting

}  // namespace velmodsp
