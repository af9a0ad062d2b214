#pragma once

#include <vector>

#include "platform/VelmoDspSystemSoundFile.h"

namespace velmodsp {

/// The number of Opus among libsndfile's encodings. Headers before version 1.1 lack some names that are used here.
constexpr int OpusEncoding = 0x0064;

SoundFileKind KindOf(int container, int encoding);

/// How the samples of an encoding are delivered, and whether each stands for itself, so that a seek leads to the same
/// ones as reading up to them. What depends on the samples before does not quite: decoders start over there.
struct SndfileEncoding {
    unsigned int bits;
    bool isFloat;
    bool seeksExactly;
};

SndfileEncoding EncodingOf(int container, int encoding);

/// Vorbis and Opus put the speakers of a frame into an order of their own: element k is where the channel lies there
/// that is channel k of a WAV file. Empty where the order is the same.
std::vector<unsigned int> CodedChannelOrder(SoundFileKind kind, unsigned int numChannels);

}  // namespace velmodsp
