#pragma once

// Help texts of inlets and outlets.

#include "ext_mess.h"

/// What an "assist" method is asked about, and the size of the text it may write.
#define ASSIST_INLET 1
#define ASSIST_OUTLET 2
#define ASSIST_MAX_STRING_LEN 500

MAX_API_BEGIN

/// An "inletinfo" method that marks every inlet but the leftmost as cold: `*t` becomes 1.
void stdinletinfo(t_object* x, void* box, long index, char* t);

MAX_API_END
