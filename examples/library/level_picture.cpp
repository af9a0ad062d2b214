/// Draws the level of a sound file over time, a strip per channel, from -90 dB (dark) to full scale (light). Blocks
/// with NaN are holes in the picture.
///
///     level_picture SOUND PICTURE.pam
///
/// PAM is the plainest of the picture files with transparency; most picture programs and converters read it. Ends with
/// 0 when the picture is written, 1 when one of the files cannot be used, 2 for wrong usage.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "velmodsp.h"

using namespace velmodsp;

namespace {

constexpr unsigned long blockSize = 1024;  // samples a picture column
constexpr unsigned int stripHeight = 32;   // rows a channel

/// Root mean square of a block in dB; NaN when there is one in the block.
float LevelInDecibels(const float* samples, unsigned long n) {
    double sum = 0.0;
    for (unsigned long i = 0; i < n; ++i) sum += static_cast<double>(samples[i]) * samples[i];
    return static_cast<float>(Constants::TwentyOverLn10<double> / 2 * std::log(sum / static_cast<double>(n)));
}

/// One row of the picture.
std::vector<Colour> DrawChannel(const AudioBuffer& sound, unsigned int channel) {
    std::vector<Colour> row;
    for (unsigned long start = 0; start < sound.GetNumSamples(); start += blockSize) {
        const unsigned long n = std::min(blockSize, sound.GetNumSamples() - start);
        const float level = LevelInDecibels(sound.GetChannel(channel) + start, n);
        row.push_back(ColourOf(1.0f + level / 90.0f, ColourMap::Magma));
    }
    return row;
}

bool WritePicture(const File& file, const std::vector<std::vector<Colour>>& strips) {
    const String header = String("P7\nWIDTH ") + strips[0].size() + "\nHEIGHT " + strips.size() * stripHeight +
                          "\nDEPTH 4\nMAXVAL 255\nTUPLTYPE RGB_ALPHA\nENDHDR\n";
    file.OverwriteIfNeeded(true);
    FileWriter writer(file);
    bool written = writer.Write(header.C_Str(), header.Length());
    for (const std::vector<Colour>& strip : strips) {
        for (unsigned int row = 0; row < stripHeight && written; ++row) {
            written = writer.Write(strip.data(), strip.size() * sizeof(Colour));
        }
    }
    return written;
}

bool DrawSound(const File& input, const File& picture) {
    AudioBuffer sound(0, 0, true);
    if (!sound.LoadFromAudioFile(input)) return false;
    std::vector<std::vector<Colour>> strips;
    for (unsigned int k = 0; k < sound.GetNumChannels(); ++k) strips.push_back(DrawChannel(sound, k));
    return WritePicture(picture, strips);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s SOUND PICTURE.pam\n", argv[0]);
        return 2;
    }
    try {
        return DrawSound(File(argv[1]), File(argv[2])) ? 0 : 1;
    } catch (const Exception&) {
        return 1;  // it has reported itself
    }
}
