#include "audiofiles/VelmoDspWavFileWriter.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "audiofiles/VelmoDspHeaderBytes.h"
#include "audiofiles/VelmoDspWavFormat.h"
#include "files/VelmoDspFile.h"

namespace velmodsp {
namespace {

constexpr std::size_t WavHeaderSize = 104;
using WavHeader = HeaderBytes<WavHeaderSize>;

constexpr std::uint64_t RiffChunkOverhead = WavHeaderSize - 8;  // of the header, what the RIFF size counts
constexpr std::uint32_t SizeIsElsewhere = 0xFFFFFFFF;           // the ds64 chunk of an RF64 file has the size
constexpr unsigned int SizesChunkSize = 28;                     // of "ds64", and of the "JUNK" in its place
constexpr unsigned int PlainFormatSize = 16;
constexpr unsigned int ExtensibleFormatSize = 40;

struct WavSizes {
    std::uint64_t riff;
    std::uint64_t data;
};

std::uint32_t Limited32(std::uint64_t value) {
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(value, std::numeric_limits<std::uint32_t>::max()));
}

/// Loudspeaker positions by channel count; 0 leaves them open.
std::uint32_t ChannelMask(unsigned int numChannels) {
    constexpr std::uint32_t masks[] = {0, 0x0, 0x3, 0x0, 0x0, 0x37, 0x3F, 0x637, 0x63F};
    return numChannels < std::size(masks) ? masks[numChannels] : 0;
}

void AppendRiffStart(WavHeader& header, const WavSizes& sizes, unsigned int junkSize) {
    header.Id("RIFF");
    // Samples of just under 4 GiB push this past 32 bits, before the 64-bit form sets in.
    header.Little32(Limited32(sizes.riff));
    header.Id("WAVE");
    header.Id("JUNK");
    header.Little32(junkSize);
    header.Zeros(junkSize);
}

void AppendRf64Start(WavHeader& header, const WavSizes& sizes) {
    header.Id("RF64");
    header.Little32(SizeIsElsewhere);
    header.Id("WAVE");
    header.Id("ds64");
    header.Little32(SizesChunkSize);
    header.Little64(sizes.riff);
    header.Little64(sizes.data);
    header.Zeros(12);  // frame count and an empty table
}

void AppendFormat(WavHeader& header, double sampleRate, unsigned int numChannels, unsigned int bits, bool extensible) {
    const bool isFloat = bits == 32;
    const std::uint64_t bytesPerFrame = std::uint64_t{bits} * numChannels / 8;
    const unsigned int plainTag = isFloat ? WavFormatTag::IeeeFloat : WavFormatTag::Pcm;
    header.Id("fmt ");
    header.Little32(extensible ? ExtensibleFormatSize : PlainFormatSize);
    header.Little16(extensible ? WavFormatTag::Extensible : plainTag);
    header.Little16(numChannels);
    header.Little32(static_cast<std::uint64_t>(sampleRate));
    header.Little32(Limited32(static_cast<std::uint64_t>(static_cast<double>(bytesPerFrame) * sampleRate)));
    header.Little16(bytesPerFrame);
    header.Little16(bits);
    if (!extensible) return;
    header.Little16(22);  // bytes that follow
    header.Little16(bits);
    header.Little32(ChannelMask(numChannels));
    header.Copy(isFloat ? WavFloatSubFormat : WavPcmSubFormat);
}

}  // namespace

std::unique_ptr<WavFileWriter> WavFileWriter::CreateWriterFor(const File& file, double sampleRate,
                                                              unsigned int numChannels, int bitsPerSample,
                                                              bool overwrite) {
    if (!Prepare(file, sampleRate, numChannels, bitsPerSample, overwrite)) return nullptr;
    return std::unique_ptr<WavFileWriter>(new WavFileWriter(file, sampleRate, numChannels, bitsPerSample));
}

WavFileWriter::WavFileWriter(const File& file, double sampleRateInHz, unsigned int channelCount, int bits)
    : AudioFileWriter(file, sampleRateInHz, channelCount, bits,
                      bits == 8 ? SampleFormat::Unsigned8 : SampleFormatFor(static_cast<unsigned int>(bits), false),
                      std::numeric_limits<unsigned long long>::max()) {
    failed = !WavFileWriter::writeHeader();
}

WavFileWriter::~WavFileWriter() { Finish(); }

bool WavFileWriter::writeHeader() {
    isRF64 = bytesWritten > std::numeric_limits<std::uint32_t>::max();
    const bool extensible = isRF64 || numChannels > 2;
    const WavSizes sizes = {GetDataSize() + (GetDataSize() & 1) + RiffChunkOverhead, GetDataSize()};

    WavHeader header;
    if (isRF64)
        AppendRf64Start(header, sizes);
    else
        AppendRiffStart(header, sizes, SizesChunkSize + (extensible ? 0 : ExtensibleFormatSize - PlainFormatSize));
    AppendFormat(header, sampleRate, numChannels, bitsPerSample, extensible);
    header.Id("data");
    header.Little32(isRF64 ? SizeIsElsewhere : sizes.data);

    usesFloatingPointData = bitsPerSample == 32;
    return output.SetPosition(headerPosition) && output.Write(header.Bytes().data(), header.Bytes().size());
}

}  // namespace velmodsp
