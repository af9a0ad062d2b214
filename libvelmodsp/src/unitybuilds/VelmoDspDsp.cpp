// The area dsp/ as one unit.

#include "dsp/VelmoDspDenormals.cpp"
#include "dsp/VelmoDspDownsampler.cpp"
#include "dsp/VelmoDspFixNaN.cpp"
#include "dsp/VelmoDspMaxMspAutoMute.cpp"
#include "dsp/VelmoDspMultiDownsampler.cpp"
#include "dsp/VelmoDspMultiFixNaN.cpp"
#include "dsp/VelmoDspMultiUpsampler.cpp"
#include "dsp/VelmoDspSignalProcessing.cpp"
