#include "batch/FileRepair.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <vector>

#include "batch/SoundFileCopy.h"
#include "sound/BatchFrames.h"
#include "sound/SoundSource.h"

namespace velmohost {
namespace {

/// The channels' samples of one round, as they were recorded.
class RecordedBlock {
public:
    RecordedBlock(unsigned numChannels, unsigned long maxFrames) : samples(numChannels * maxFrames) {
        for (unsigned c = 0; c < numChannels; ++c) channels.push_back(samples.data() + c * maxFrames);
    }

    const float* Channel(unsigned channel) const { return channels[channel]; }

    /// Takes the frames out of the copy and puts them into the object.
    void Fill(const SoundFileCopy& copy, RepairObject& object, unsigned long numFrames) {
        copy.GetChannels(channels);
        for (unsigned c = 0; c < channels.size(); ++c) {
            double* const end = std::copy_n(Channel(c), numFrames, object.Input(c));
            // A last vector that is not full gets silence, so that nothing left from before counts as bad.
            const unsigned long rest = numFrames % RepairObject::kVectorSize;
            if (rest != 0) std::fill_n(end, RepairObject::kVectorSize - rest, 0.0);
        }
    }

private:
    std::vector<float> samples;
    std::vector<float*> channels;  // into the samples
};

/// A channel's samples as they are to be written: those recorded, but for the bad ones, which are the object's. These
/// go into the copy as well.
void Repair(std::vector<float>& after, unsigned channel, const RecordedBlock& recorded, const RepairObject& object,
            unsigned long numFrames, SoundFileCopy& copy) {
    const float* const before = recorded.Channel(channel);
    const double* const repaired = object.Output(channel);
    after.assign(before, before + numFrames);
    for (unsigned long i = 0; i < numFrames; ++i) {
        if (std::isfinite(before[i])) continue;
        after[i] = static_cast<float>(repaired[i]);
        if (!std::isfinite(after[i])) throw std::runtime_error("a bad sample came back bad");
        copy.Replace(channel, i, after[i]);
    }
}

/// Where the samples lie that were scanned.
velmodsp::FrameLayout FindLayout(const FileScan& scan) {
    const SoundSource source(scan.path);
    const velmodsp::FrameLayout& layout = source.Layout();
    if (layout.sampleFormat == velmodsp::SampleFormat::None) {
        throw std::runtime_error("only WAV and AIFF files can be repaired");
    }
    if (layout.numChannels != scan.channels.size() || !source.HoldsFloats() ||
        layout.numStoredFrames != scan.numFrames - scan.numMissingFrames) {
        throw std::runtime_error("the file has changed since it was scanned");
    }
    return layout;
}

}  // namespace

unsigned long ChooseRepairFrames(unsigned numChannels) {
    return ChooseBatchFrames(RepairObject::kVectorSize, numChannels);
}

bool RepairSoundFile(const FileScan& scan, RepairObject& object, const std::string& outputPath,
                     const FileProgress& progress, const RepairObserver& observer) {
    const auto numChannels = static_cast<unsigned>(scan.channels.size());
    const unsigned long maxFrames = ChooseRepairFrames(numChannels);
    SoundFileCopy copy(scan.path, FindLayout(scan), outputPath);
    RecordedBlock recorded(numChannels, maxFrames);
    std::vector<float> after;
    std::uint64_t numDone = 0;
    while (const unsigned long n = copy.ReadFrames(maxFrames)) {
        recorded.Fill(copy, object, n);
        object.Process(n);
        for (unsigned c = 0; c < numChannels; ++c) {
            if (scan.channels[c].NumBad() == 0) continue;
            Repair(after, c, recorded, object, n, copy);
            if (observer) observer(c, recorded.Channel(c), after.data(), n);
        }
        copy.WriteFrames();
        progress(static_cast<double>(numDone += n) / static_cast<double>(scan.numFrames));
    }
    return copy.Finish();
}

}  // namespace velmohost
