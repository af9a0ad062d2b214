#include "SoundFileFuzzing.h"
#include "audiofiles/VelmoDspWavFileReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    SoundFileFuzzing(input, "sound.wav").Run<velmodsp::WavFileReader>();
    return 0;
}
