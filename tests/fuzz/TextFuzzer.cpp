// What people type: the text of a box, and lines at the prompt. Atoms are what the words say, and read back from their
// text as they were; a living object takes every line.

#include <cmath>
#include <cstring>

#include "ObjectFuzzing.h"
#include "commands/Interruption.h"
#include "repl/ReplSession.h"

using velmohost::AtomsToText;
using velmohost::ParseAtoms;

namespace {

constexpr const char* kBlanks = " \t\n\r";

bool IsSame(const t_atom& a, const t_atom& b) {
    return a.a_type == b.a_type && std::memcmp(&a.a_w, &b.a_w, sizeof a.a_w) == 0;
}

/// A word without quotes and backslashes, read by the C library.
t_atom Read(const std::string& word) {
    t_atom atom{};
    char* end = nullptr;
    errno = 0;
    const long integer = std::strtol(word.c_str(), &end, 10);
    if (*end == '\0' && errno == 0) {
        atom_setlong(&atom, integer);
        return atom;
    }
    const double number = std::strtod(word.c_str(), &end);
    const bool isDecimal = word.find_first_not_of("0123456789+-.eE") == std::string::npos;
    if (isDecimal && *end == '\0') {
        atom_setfloat(&atom, number);
    } else {
        atom_setsym(&atom, gensym(word.c_str()));
    }
    return atom;
}

void CheckWords(const std::string& text) {
    if (text.find_first_of(std::string("\"\\\v\f\0", 5)) != std::string::npos) return;
    const std::vector<t_atom> atoms = ParseAtoms(text);
    std::size_t count = 0;
    for (std::size_t start = text.find_first_not_of(kBlanks); start != std::string::npos; ++count) {
        const std::size_t end = std::min(text.find_first_of(kBlanks, start), text.size());
        Require(count < atoms.size() && IsSame(atoms[count], Read(text.substr(start, end - start))),
                "an atom is what its word says");
        start = text.find_first_not_of(kBlanks, end);
    }
    Require(count == atoms.size(), "as many atoms as words");
}

/// A value that 32 bits hold is written with their digits; an infinity reads back as a word.
bool ReadsBack(const t_atom& atom, const t_atom& again) {
    if (atom.a_type != A_FLOAT) return IsSame(atom, again);
    if (std::isinf(atom.a_w.w_float)) return again.a_type == A_SYM;
    const auto narrow = static_cast<float>(atom.a_w.w_float);
    const bool fits = static_cast<double>(narrow) == atom.a_w.w_float;
    return again.a_type == A_FLOAT && (fits ? static_cast<float>(again.a_w.w_float) == narrow : IsSame(atom, again));
}

void CheckThatAtomsReadBack(const std::string& text) {
    const std::vector<t_atom> atoms = ParseAtoms(text);
    const std::vector<t_atom> again = ParseAtoms(AtomsToText(static_cast<long>(atoms.size()), atoms.data()));
    Require(std::equal(atoms.begin(), atoms.end(), again.begin(), again.end(), ReadsBack),
            "atoms read back as they were");
}

/// At the prompt a line may have sound flow for hours.
bool IsQuick(const std::string& line) {
    const std::optional<velmohost::MessageText> message = velmohost::ParseMessageText(line);
    const bool isWait = message && message->selector == gensym("dsp") && message->arguments.size() == 2;
    return !isWait || std::abs(atom_getfloat(&message->arguments[1])) < 0.05;
}

void Type(const std::vector<std::string>& lines, velmohost::Box& box) {
    velmohost::Interruption interruption;
    velmohost::RunOptions options;
    options.seconds = 0.01;
    velmohost::ReplSession session(options, box, interruption, velmohost::ReplClock::Script);
    for (const std::string& line : lines) {
        if (IsQuick(line)) session.Execute(WithinWorkplace(line));
        session.Complete(line);
    }
    session.Finish();
    if (interruption.Requested()) std::_Exit(130);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const std::vector<std::string> lines = TakeLines(input);
    for (const std::string& line : lines) {
        CheckWords(line);
        CheckThatAtomsReadBack(line);
    }
    if (lines.empty()) return 0;
    std::unique_ptr<velmohost::Box> box = TheHost().Create(lines[0]);
    if (!box) box = TheHost().Create("tesk.fixnan~ " + lines[0]);
    if (box) {
        Type({lines.begin() + 1, lines.end()}, *box);
    } else {
        Require(!TheHost().TakeRows().empty(), "a reason why there is no object");
    }
    TheHost().TakeRows();
    return 0;
}
