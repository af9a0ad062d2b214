#pragma once

#include <random>
#include <vector>

/// `n` samples of white noise between -1 and 1, the same for the same seed on every system.
inline std::vector<float> Noise(std::size_t n, unsigned int seed) {
    std::mt19937 random(seed);
    std::vector<float> samples(n);
    for (float& x : samples) x = static_cast<float>(static_cast<double>(random()) / 2147483648.0 - 1.0);
    return samples;
}
