#include "core/Numbers.h"

#include <charconv>
#include <cstdlib>
#include <limits>

#include "ext_obex.h"

namespace velmohost {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t SkipDigits(const std::string& text, std::size_t position) {
    while (position < text.size() && IsDigit(text[position])) ++position;
    return position;
}

std::size_t SkipSign(const std::string& text, std::size_t position) {
    return position < text.size() && (text[position] == '-' || text[position] == '+') ? position + 1 : position;
}

enum class Notation { None, Integer, Fraction };

/// [sign] digits [. digits] [e [sign] digits], with at least one digit before the exponent.
Notation FindNotation(const std::string& text) {
    const std::size_t start = SkipSign(text, 0);
    std::size_t position = SkipDigits(text, start);
    std::size_t numDigits = position - start;
    const bool hasPoint = position < text.size() && text[position] == '.';
    if (hasPoint) {
        const std::size_t fraction = position + 1;
        position = SkipDigits(text, fraction);
        numDigits += position - fraction;
    }
    if (numDigits == 0) return Notation::None;
    if (position == text.size()) return hasPoint ? Notation::Fraction : Notation::Integer;
    if (text[position] != 'e' && text[position] != 'E') return Notation::None;
    const std::size_t exponent = SkipSign(text, position + 1);
    const std::size_t end = SkipDigits(text, exponent);
    return end > exponent && end == text.size() ? Notation::Fraction : Notation::None;
}

}  // namespace

bool ReadNumber(const std::string& text, t_atom& number) {
    const Notation notation = FindNotation(text);
    if (notation == Notation::None) return false;
    if (notation == Notation::Integer) {
        const char* const first = text.data() + (text.front() == '+' ? 1 : 0);
        t_atom_long value = 0;
        if (std::from_chars(first, text.data() + text.size(), value).ec == std::errc{}) {
            atom_setlong(&number, value);
            return true;
        }
    }
    atom_setfloat(&number, std::strtod(text.c_str(), nullptr));
    return true;
}

t_atom_long TruncateToLong(double value) {
    constexpr double limit = 9223372036854775808.0;  // 2^63, the first double above every long
    if (value >= limit) return std::numeric_limits<t_atom_long>::max();
    if (value <= -limit) return std::numeric_limits<t_atom_long>::min();
    return value == value ? static_cast<t_atom_long>(value) : 0;
}

}  // namespace velmohost
