#include "text/VelmoDspStringArray.h"

#include <string>
#include <utility>

namespace velmodsp {

[[gnu::noinline]] StringArray& StringArray::operator=(const StringArray& other) {
    if (this == &other) return *this;
    GuardGrowth([&] {
        Resize(other.Size());
        for (unsigned long i = 0; i < Size(); ++i) strings[i] = other[i];
    });
    return *this;
}

[[gnu::noinline]] void StringArray::Resize(unsigned long n) {
    ResizeVector(strings, n);
    // Keeps this function on the call stack while the vector grows, so that a failure can name it.
    asm volatile("");
}

void StringArray::SplitString(StringArray& out, const char* text, const String& separator) {
    const std::string rest(text);
    const std::string cut = separator.Str();
    StringArray pieces;
    std::size_t start = 0;
    if (!cut.empty()) {
        for (std::size_t hit; (hit = rest.find(cut, start)) != std::string::npos; start = hit + cut.size()) {
            pieces.PushBack(String(rest.substr(start, hit - start)));
        }
    }
    if (start < rest.size()) pieces.PushBack(String(rest.substr(start)));
    if (pieces.Size() == 0) pieces.PushBack(String());
    std::swap(out.strings, pieces.strings);
}

StringArray& StringArray::SplitString(const char* text, const String& separator) {
    SplitString(*this, text, separator);
    return *this;
}

StringArray& StringArray::SplitString(const std::ostringstream& text, const String& separator) {
    return SplitString(text.str().c_str(), separator);
}

}  // namespace velmodsp
