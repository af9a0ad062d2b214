#include "platform/VelmoDspClassicLocale.h"

#include <locale.h>
#ifdef __APPLE__
#include <xlocale.h>
#endif

namespace velmodsp {
namespace {

/// Null when the system has none to give, which leaves the thread's locale as it is.
locale_t ClassicLocale() {
    static const locale_t classic = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return classic;
}

}  // namespace

ScopedClassicLocale::ScopedClassicLocale() : previous(uselocale(ClassicLocale())) {}

ScopedClassicLocale::~ScopedClassicLocale() { uselocale(static_cast<locale_t>(previous)); }

}  // namespace velmodsp
