// The area audiofiles/ as one unit.

#include "audiofiles/VelmoDspAiffFileReader.cpp"
#include "audiofiles/VelmoDspAiffFileWriter.cpp"
#include "audiofiles/VelmoDspAiffSampleRate.cpp"
#include "audiofiles/VelmoDspAudioFileReader.cpp"
#include "audiofiles/VelmoDspAudioFileWriter.cpp"
#include "audiofiles/VelmoDspAudioFilesManager.cpp"
#include "audiofiles/VelmoDspFrameReader.cpp"
#include "audiofiles/VelmoDspSampleFormat.cpp"
#include "audiofiles/VelmoDspWavFileReader.cpp"
#include "audiofiles/VelmoDspWavFileWriter.cpp"
