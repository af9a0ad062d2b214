// The area math/ as one unit.

#include "math/VelmoDspMatrix.cpp"
