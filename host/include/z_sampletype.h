#pragma once

// Samples on the host's wires are 64-bit.

#define MSP64 1

typedef float t_float;
typedef double t_double;
typedef double t_sample;
