#pragma once

#include <array>

namespace velmodsp {

/// Numbers of the WAV format that reader and writer share.
namespace WavFormatTag {
constexpr unsigned int Pcm = 1;
constexpr unsigned int IeeeFloat = 3;
constexpr unsigned int Extensible = 0xFFFE;  // the sub-format identifier says what the samples are
}  // namespace WavFormatTag

/// Sub-format identifiers of the extensible form, as they lie in the file.
using WavSubFormat = std::array<unsigned char, 16>;

/// 00000001-0000-0010-8000-00AA00389B71
constexpr WavSubFormat WavPcmSubFormat = {0x01, 0, 0, 0, 0, 0, 0x10, 0, 0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71};
/// 00000003-0000-0010-8000-00AA00389B71
constexpr WavSubFormat WavFloatSubFormat = {0x03, 0, 0, 0, 0, 0, 0x10, 0, 0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71};
/// 00000001-0721-11D3-8644-C8C1CA000000: integer PCM that carries B-format ambisonics
constexpr WavSubFormat WavAmbisonicPcmSubFormat = {0x01, 0,    0,    0,    0x21, 0x07, 0xD3, 0x11,
                                                   0x86, 0x44, 0xC8, 0xC1, 0xCA, 0,    0,    0};

}  // namespace velmodsp
