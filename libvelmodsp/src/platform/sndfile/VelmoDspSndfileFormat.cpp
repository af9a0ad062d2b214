#include "platform/sndfile/VelmoDspSndfileFormat.h"

#include <sndfile.h>

namespace velmodsp {
namespace {

constexpr int MpegContainer = 0x230000;

}  // namespace

SoundFileKind KindOf(int container, int encoding) {
    switch (container) {
        case MpegContainer:
            return SoundFileKind::Mp3;
        case SF_FORMAT_FLAC:
            return SoundFileKind::Flac;
        case SF_FORMAT_CAF:
            return SoundFileKind::Caf;
        case SF_FORMAT_OGG:
            if (encoding == SF_FORMAT_VORBIS) return SoundFileKind::Vorbis;
            return encoding == OpusEncoding ? SoundFileKind::Opus : SoundFileKind::Other;
        default:
            return SoundFileKind::Other;
    }
}

SndfileEncoding EncodingOf(int container, int encoding) {
    switch (encoding) {
        case SF_FORMAT_PCM_S8:
        case SF_FORMAT_PCM_U8:
            return {8, false, true};
        case SF_FORMAT_PCM_16:
        case SF_FORMAT_ULAW:
        case SF_FORMAT_ALAW:
            return {16, false, true};
        case SF_FORMAT_PCM_24:
            return {24, false, true};
        case SF_FORMAT_PCM_32:
            return {32, false, true};
        case SF_FORMAT_FLOAT:
            return {32, true, true};
        case SF_FORMAT_DOUBLE:
            return {64, true, true};
        case SF_FORMAT_ALAC_20:
            return {20, false, false};
        case SF_FORMAT_ALAC_24:
            return {24, false, false};
        case SF_FORMAT_ALAC_32:
            return {32, false, false};
        case SF_FORMAT_VORBIS:
        case OpusEncoding:
            return {32, true, false};
        default:
            return container == MpegContainer ? SndfileEncoding{32, true, false} : SndfileEncoding{16, false, false};
    }
}

std::vector<unsigned int> CodedChannelOrder(SoundFileKind kind, unsigned int numChannels) {
    if (kind != SoundFileKind::Vorbis && kind != SoundFileKind::Opus) return {};
    switch (numChannels) {
        case 3:
            return {0, 2, 1};
        case 5:
            return {0, 2, 1, 3, 4};
        case 6:
            return {0, 2, 1, 5, 3, 4};
        case 7:
            return {0, 2, 1, 6, 5, 3, 4};
        case 8:
            return {0, 2, 1, 7, 5, 6, 3, 4};
        default:
            return {};
    }
}

}  // namespace velmodsp
