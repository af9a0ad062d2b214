#pragma once

// Patchers and boxes, which are objects to everyone but the host.

#include "ext_mess.h"

typedef t_object t_patcher;
typedef t_object t_box;

/// How far iterations over a patcher reach.
enum { PI_DEEP = 1, PI_REQUIREFIRSTIN = 2, PI_WANTBOX = 4, PI_SKIPGEN = 8 };
