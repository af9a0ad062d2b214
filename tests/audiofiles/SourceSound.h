#pragma once

#include <bit>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <string>

#include "audiofiles/FileBytes.h"
#include "support/Noise.h"

namespace velmodsp {

/// Sound as encoders are given it: a number of channels with integer samples of some depth.
struct SourceSound {
    unsigned int rate, bits;
    std::vector<std::vector<int>> channels;

    std::size_t NumFrames() const { return channels.front().size(); }
    float Sample(std::size_t channel, std::size_t frame) const {
        return static_cast<float>(std::ldexp(channels[channel][frame], 1 - static_cast<int>(bits)));
    }

    /// All frames as a little-endian file has them.
    Bytes Frames() const {
        Bytes bytes;
        for (std::size_t i = 0; i < NumFrames(); ++i)
            for (const auto& channel : channels)
                for (unsigned int shift = 0; shift < bits; shift += 8)
                    bytes.push_back(static_cast<unsigned char>(channel[i] >> shift));
        return bytes;
    }

    Bytes Wav() const {
        const auto count = static_cast<unsigned int>(channels.size());
        return Riff(WavFormat(1, count, rate, bits) + RiffChunk("data", Frames()));
    }

    /// A file in the Core Audio Format, whose numbers are big-endian while its samples need not be.
    Bytes Caf() const {
        const auto numChannels = static_cast<unsigned int>(channels.size());
        const unsigned int littleEndian = 2;
        const Bytes description = BigEndian(std::bit_cast<std::uint64_t>(1.0 * rate), 8) + Text("lpcm") +
                                  Be32(littleEndian) + Be32(bits / 8 * numChannels) + Be32(1) + Be32(numChannels) +
                                  Be32(bits);
        const Bytes data = Be32(0) + Frames();
        return Text("caff") + Be16(1) + Be16(0) + Text("desc") + BigEndian(description.size(), 8) + description +
               Text("data") + BigEndian(data.size(), 8) + data;
    }
};

/// Tones, a little noise and, every half second, a pause: lossy codecs switch between their kinds of blocks here.
inline SourceSound Music(unsigned int rate, unsigned int bits, unsigned int numChannels, std::size_t numFrames) {
    SourceSound sound{rate, bits, {}};
    for (unsigned int k = 0; k < numChannels; ++k) {
        const std::vector<float> noise = Noise(numFrames, k + 1);
        std::vector<int>& samples = sound.channels.emplace_back(numFrames);
        for (std::size_t i = 0; i < numFrames; ++i) {
            const double t = static_cast<double>(i) / rate, turn = 2 * std::numbers::pi * t;
            const bool isPause = static_cast<int>(2 * t) % 3 == 2;
            const double tones = 0.4 * std::sin(220 * (k + 1) * turn) + 0.2 * std::sin((500 + 300 * t) * turn);
            const double value = isPause ? 0.0 : tones + 0.002 * static_cast<double>(noise[i]);
            samples[i] = static_cast<int>(std::lrint(std::ldexp(value, static_cast<int>(bits) - 1)));
        }
    }
    return sound;
}

/// A gliding voice without a pause, which speech codecs predict from what was long before.
inline SourceSound Voice(unsigned int rate, std::size_t numFrames) {
    SourceSound sound{rate, 16, {std::vector<int>(numFrames)}};
    for (std::size_t i = 0; i < numFrames; ++i) {
        const double t = static_cast<double>(i) / rate, turn = 2 * std::numbers::pi * t;
        const double pitch = 120 * t + 4 * std::sin(0.7 * turn);
        double value = 0.0;
        for (int k = 1; k < 12; ++k) value += std::sin(2 * std::numbers::pi * k * pitch) / k * (1 + std::sin(k * t));
        sound.channels[0][i] = static_cast<int>(std::lrint(4000 * value));
    }
    return sound;
}

inline bool IsInstalled(const std::string& program) {
    return std::system(("command -v " + program + " >/dev/null").c_str()) == 0;
}

/// Runs a command of the shell in a folder. @return whether it went well
inline bool RunIn(const std::string& folder, const std::string& command) {
    return std::system(("cd '" + folder + "' && " + command + " >log.txt 2>&1").c_str()) == 0;
}

}  // namespace velmodsp
