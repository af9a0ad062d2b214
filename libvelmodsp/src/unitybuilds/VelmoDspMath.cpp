// The area math/ as one unit.

#include "math/VelmoDspMatFileWriter.cpp"
#include "math/VelmoDspMatrix.cpp"
