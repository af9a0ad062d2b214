// The area utils/ as one unit.

#include "utils/VelmoDspAudioBuffer.cpp"
#include "utils/VelmoDspBacktrace.cpp"
#include "utils/VelmoDspColourMap.cpp"
#include "utils/VelmoDspConsoleLog.cpp"
#include "utils/VelmoDspDate.cpp"
#include "utils/VelmoDspDemangling.cpp"
#include "utils/VelmoDspException.cpp"
#include "utils/VelmoDspInfos.cpp"
#include "utils/VelmoDspMemory.cpp"
#include "utils/VelmoDspStopWatch.cpp"
