/// Takes NaN, infinities and the offset out of a sound file, block by block.
///
///     process_file INPUT OUTPUT
///
/// Ends with 0 when the file is written, 1 when one of the files cannot be used, 2 for wrong usage.

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

#include "HighPass.h"
#include "velmodsp.h"

using namespace velmodsp;

namespace {

constexpr unsigned int blockSize = 4096;  // samples

/// Gets a processor ready for blocks of up to `blockSize` samples, with all its inputs and outputs in use.
void Prepare(SignalProcessing& processor, double samplerate) {
    processor.Configure(static_cast<float>(samplerate), blockSize, true);
    const std::vector<short> connected(processor.GetNumInputs() + processor.GetNumOutputs(), 1);
    processor.SetInletsAndOutletsStatus(connected.data());
}

void ProcessFile(const File& input, const File& output) {
    const std::unique_ptr<AudioFileReader> reader = AudioFileReader::CreateReaderFor(input);
    if (!reader) throw Exception("No file to read", __FILE__, __LINE__, true, false);
    const unsigned int numChannels = reader->GetNumChannels();
    const std::unique_ptr<AudioFileWriter> writer =
        AudioFileWriter::CreateWriterFor(output, reader->GetSampleRate(), numChannels, true);
    if (!writer) throw Exception("No file to write", __FILE__, __LINE__, true, false);

    MultiFixNaN repair(numChannels);
    HighPass highPass(numChannels, 20.0f);
    Prepare(repair, reader->GetSampleRate());
    Prepare(highPass, reader->GetSampleRate());

    AudioBuffer block(numChannels, blockSize, true);
    float** outs = block.GetChannels();
    std::vector<const float*> ins(outs, outs + numChannels);  // in place: the same samples, to be read
    for (unsigned long long start = 0; start < reader->GetLengthInSamples(); start += blockSize) {
        const auto n =
            static_cast<unsigned long>(std::min<unsigned long long>(blockSize, reader->GetLengthInSamples() - start));
        reader->ReadSamples(block, 0, n, start);
        repair.performInternal(outs, ins.data(), n, 0, 0, 0);
        highPass.performInternal(outs, ins.data(), n, 0, 0, 0);
        if (!writer->WriteSamples(block, 0, n)) throw Exception("Disk full", __FILE__, __LINE__, true, false);
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s INPUT OUTPUT\n", argv[0]);
        return 2;
    }
    try {
        ProcessFile(File(argv[1]), File(argv[2]));
    } catch (const Exception&) {
        return 1;  // it has reported itself
    }
    return 0;
}
