// What the host calls when it has loaded the plug-in: `ext_main`, or `main` if it is an old one. The file stands alone
// so that programs other than the plug-in can use the object's sources.
#include "tesk_fixnan.h"

// C++ keeps the name `main` for the start of programs, so the function is called otherwise here and only the assembler
// knows it as main, with the prefix that the platform gives to names of C.
#define QUOTED(text) #text
#define WITH_PREFIX(prefix, name) QUOTED(prefix) name

extern "C" {

C74_EXPORT int tesk_fixnan_main() __asm__(WITH_PREFIX(__USER_LABEL_PREFIX__, "main"));

int tesk_fixnan_main() {
    tesk_fixnan_setup();
    return 0;
}

C74_EXPORT void ext_main(void*) { tesk_fixnan_setup(); }
}
