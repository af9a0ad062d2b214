#pragma once

// Boxes and patchers, as far as objects without a face of their own name them.

#include "ext_maxtypes.h"

/// A rectangle in points.
typedef struct _rect {
    double x;
    double y;
    double width;
    double height;
} t_rect;
