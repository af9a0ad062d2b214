#include "audiofiles/VelmoDspAiffFileWriter.h"

#include <cstdint>
#include <limits>

#include "audiofiles/VelmoDspAiffSampleRate.h"
#include "audiofiles/VelmoDspHeaderBytes.h"
#include "files/VelmoDspFile.h"

namespace velmodsp {
namespace {

constexpr std::size_t AiffHeaderSize = 54;
constexpr std::uint64_t FormChunkOverhead = AiffHeaderSize - 8;  // of the header, what the FORM size counts
constexpr std::uint64_t SoundDataChunkOverhead = 8;              // offset and block size
constexpr unsigned int CommonChunkSize = 18;
/// With the header and a pad byte the most that the 32-bit FORM size can count.
constexpr std::uint64_t MaximumDataSize = std::numeric_limits<std::uint32_t>::max() - FormChunkOverhead - 1;

}  // namespace

std::unique_ptr<AiffFileWriter> AiffFileWriter::CreateWriterFor(const File& file, double sampleRate,
                                                                unsigned int numChannels, int bitsPerSample,
                                                                bool overwrite) {
    if (!Prepare(file, sampleRate, numChannels, bitsPerSample, overwrite)) return nullptr;
    return std::unique_ptr<AiffFileWriter>(new AiffFileWriter(file, sampleRate, numChannels, bitsPerSample));
}

AiffFileWriter::AiffFileWriter(const File& file, double sampleRateInHz, unsigned int channelCount, int bits)
    : AudioFileWriter(file, sampleRateInHz, channelCount, bits, SampleFormatFor(static_cast<unsigned int>(bits), true),
                      MaximumDataSize) {
    failed = !AiffFileWriter::writeHeader();
}

AiffFileWriter::~AiffFileWriter() { Finish(); }

bool AiffFileWriter::Complete() {
    // After a failed write the output does not stand at the end of the samples.
    const bool isPadded = bytesWritten % 2 == 0 ||
                          (output.SetPosition(headerPosition + AiffHeaderSize + bytesWritten) && output.WriteByte(0));
    return writeHeader() && isPadded;
}

bool AiffFileWriter::writeHeader() {
    const std::uint64_t paddedDataSize = GetDataSize() + (GetDataSize() & 1);

    HeaderBytes<AiffHeaderSize> header;
    header.Id("FORM");
    header.Big32(paddedDataSize + FormChunkOverhead);
    header.Id("AIFF");
    header.Id("COMM");
    header.Big32(CommonChunkSize);
    header.Big16(numChannels);
    header.Big32(lengthInSamples);
    header.Big16(bitsPerSample);
    header.Copy(EncodeAiffSampleRate(sampleRate));
    header.Id("SSND");
    header.Big32(paddedDataSize + SoundDataChunkOverhead);
    header.Zeros(8);  // offset and block size
    return output.SetPosition(headerPosition) && output.Write(header.Bytes().data(), header.Bytes().size());
}

}  // namespace velmodsp
