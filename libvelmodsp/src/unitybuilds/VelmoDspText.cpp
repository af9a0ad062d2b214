// The area text/ as one unit.

#include "text/VelmoDspString.cpp"
#include "text/VelmoDspStringArray.cpp"
