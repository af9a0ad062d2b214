#pragma once

// The signal API under its second name.

#include "z_dsp.h"
