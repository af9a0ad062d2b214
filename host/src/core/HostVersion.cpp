#include "ext.h"

extern "C" short maxversion(void) { return C74_MAX_SDK_VERSION; }
