#pragma once

#include <utility>
#include <vector>

/// Channels of samples together with the pointer tables that signal processors take.
template <class Sample>
struct Block {
    using Channel = std::vector<Sample>;

    explicit Block(std::vector<Channel> samples) : channels(std::move(samples)) {}
    Block(std::size_t numChannels, std::size_t numFrames, Sample value = Sample{0})
        : channels(numChannels, Channel(numFrames, value)) {}

    Channel& operator[](std::size_t k) { return channels[k]; }

    Sample** Outs() {
        writable.clear();
        for (Channel& channel : channels) writable.push_back(channel.data());
        return writable.data();
    }
    const Sample** Ins() {
        readable.clear();
        for (Channel& channel : channels) readable.push_back(channel.data());
        return readable.data();
    }

    std::vector<Channel> channels;

private:
    std::vector<Sample*> writable;
    std::vector<const Sample*> readable;
};
