// The area files/ as one unit.

#include "files/VelmoDspFile.cpp"
#include "files/VelmoDspFileHandle.cpp"
#include "files/VelmoDspFileReader.cpp"
#include "files/VelmoDspFileWriter.cpp"
