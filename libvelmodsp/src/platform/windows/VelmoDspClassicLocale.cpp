#include "platform/VelmoDspClassicLocale.h"

#include <locale.h>
#include <clocale>
#include <string>

namespace velmodsp {
namespace {

/// What the thread had before.
struct ThreadLocale {
    int perThread;
    std::string numbers;
};

}  // namespace

ScopedClassicLocale::ScopedClassicLocale() : previous(nullptr) {
    const int perThread = _configthreadlocale(_ENABLE_PER_THREAD_LOCALE);
    const char* numbers = std::setlocale(LC_NUMERIC, nullptr);
    previous = new ThreadLocale{perThread, numbers == nullptr ? "C" : numbers};
    std::setlocale(LC_NUMERIC, "C");
}

ScopedClassicLocale::~ScopedClassicLocale() {
    const auto* before = static_cast<const ThreadLocale*>(previous);
    std::setlocale(LC_NUMERIC, before->numbers.c_str());
    if (before->perThread != -1) _configthreadlocale(before->perThread);
    delete before;
}

}  // namespace velmodsp
