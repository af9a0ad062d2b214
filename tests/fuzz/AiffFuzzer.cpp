#include "SoundFileFuzzing.h"
#include "audiofiles/VelmoDspAiffFileReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    SoundFileFuzzing(input, "sound.aiff").Run<velmodsp::AiffFileReader>();
    return 0;
}
