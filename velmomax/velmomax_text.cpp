#include "velmomax_text.h"

#include <array>
#include <cctype>
#include <locale>
#include <sstream>

namespace velmomax {

namespace {

/// The host and other programs parse these texts, whatever language its user speaks.
std::ostringstream classicStream() {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream.exceptions(std::ios::badbit);  // without memory it would leave out what it has no room for, and say nothing
    return stream;
}

template <typename Number>
std::string printed(Number value) {
    std::ostringstream stream = classicStream();
    stream << value;
    return stream.str();
}

std::string trimmedFloat(double value) {
    std::string trimmed = fixedFloat(value);
    trimmed.erase(trimmed.find_last_not_of('0') + 1);
    return trimmed;
}

std::string atomText(const t_atom& atom) {
    switch (atom.a_type) {
        case A_SYM:
            return std::string(atom_getsym(&atom)->s_name) + " ";
        case A_FLOAT:
            return trimmedFloat(atom_getfloat(&atom)) + " ";
        case A_LONG:
            return std::to_string(atom_getlong(&atom)) + " ";
        default:
            return "";
    }
}

struct ErrorName {
    t_max_err code;
    const char* name;
};

constexpr std::array<ErrorName, 5> errorNames{{{0, "MAX_ERR_NONE"},
                                               {-1, "MAX_ERR_GENERIC"},
                                               {-2, "MAX_ERR_INVALID_PTR"},
                                               {-3, "MAX_ERR_DUPLICATE"},
                                               {-4, "MAX_ERR_OUT_OF_MEM"}}};

}  // namespace

std::string long2string(long value) { return printed(value); }

template <typename Number>
std::string float2string(Number value) {
    return printed(value);
}

template std::string float2string<unsigned int>(unsigned int);
template std::string float2string<int>(int);
template std::string float2string<float>(float);

std::string fixedFloat(double value) {
    std::ostringstream stream = classicStream();
    stream << std::fixed << static_cast<float>(value);
    return stream.str();
}

void atomarray2string(long argc, const t_atom* argv, std::string& out) {
    out.clear();
    if (!argv) return;
    for (long i = 0; i < argc; ++i) out += atomText(argv[i]);
}

void removeTrailingSpaces(std::string& text) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) text.pop_back();
}

const char* GetErrorName(t_max_err code) noexcept {
    for (const ErrorName& error : errorNames) {
        if (error.code == code) return error.name;
    }
    return "unknown MAX_ERR";
}

void post_message(void* x, long argc, const t_atom* argv, const char* name) {
    std::string text;
    atomarray2string(argc, argv, text);
    object_post(static_cast<t_object*>(x), "%s : %s", name, text.c_str());
}

void post_error_message(void* x, long argc, const t_atom* argv, const char* text) {
    auto* object = static_cast<t_object*>(x);
    if (!argv || argc == 0) {
        object_error(object, "%s ", text);
        return;
    }
    std::string atoms;
    atomarray2string(argc, argv, atoms);
    object_error(object, "%s %s", text, atoms.c_str());
}

}  // namespace velmomax
