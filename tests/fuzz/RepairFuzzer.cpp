// Files of any bytes go through scan and repair. A repaired file holds no bad sample, and but for those that were bad
// it has every byte of the damaged one.

#include <bit>
#include <cmath>
#include <set>

#include "ObjectFuzzing.h"
#include "batch/FileRepair.h"
#include "batch/FileScan.h"
#include "batch/RepairObject.h"
#include "sound/SoundError.h"
#include "sound/SoundSource.h"

namespace {

const velmohost::FileProgress kNoProgress = [](double done) { Require(done <= 1.0, "no more than all is done"); };

/// Positions of all bytes that belong to a bad sample.
std::set<std::uint64_t> BytesOfBadSamples(const std::string& path, const std::vector<std::uint8_t>& bytes) {
    const velmohost::SoundSource source(path);
    const velmodsp::FrameLayout& layout = source.Layout();
    const bool isBig = layout.sampleFormat == velmodsp::SampleFormat::Big32;
    std::set<std::uint64_t> positions;
    for (std::uint64_t frame = 0; frame < layout.numStoredFrames; ++frame) {
        for (unsigned k = 0; k < layout.numChannels; ++k) {
            const std::uint64_t position = layout.dataStart + frame * layout.bytesPerFrame + k * 4;
            std::uint32_t bits = 0;
            for (unsigned i = 0; i < 4 && position + i < bytes.size(); ++i) {
                bits |= std::uint32_t{bytes[position + i]} << (8 * (isBig ? 3 - i : i));
            }
            if (std::isfinite(std::bit_cast<float>(bits))) continue;
            for (unsigned i = 0; i < 4; ++i) positions.insert(position + i);
        }
    }
    return positions;
}

void CheckRepairedFile(const velmohost::FileScan& scan, const std::vector<std::uint8_t>& damaged,
                       const std::string& repairedPath) {
    const velmohost::FileScan after = velmohost::ScanSoundFile(repairedPath, kNoProgress);
    Require(after.IsClean(), "a repaired file has no bad samples");
    Require(after.numFrames == scan.numFrames && after.channels.size() == scan.channels.size() &&
                after.samplerate == scan.samplerate,
            "a repaired file is of the same kind");
    const std::string repaired = ReadFile(repairedPath);
    Require(repaired.size() == damaged.size(), "a repaired file is as long");
    const std::set<std::uint64_t> mayDiffer = BytesOfBadSamples(scan.path, damaged);
    for (std::size_t i = 0; i < damaged.size(); ++i) {
        Require(static_cast<std::uint8_t>(repaired[i]) == damaged[i] || mayDiffer.contains(i),
                "a repair leaves everything else as it was");
    }
}

void Repair(const velmohost::FileScan& scan, const velmohost::RepairMode& mode,
            const std::vector<std::uint8_t>& damaged) {
    static velmohost::RepairHost host({});
    const std::string repairedPath = Workplace() / "repaired.wav";
    std::remove(repairedPath.c_str());
    const auto numChannels = static_cast<unsigned>(scan.channels.size());
    try {
        velmohost::RepairObject object(host, mode, numChannels, scan.samplerate,
                                       velmohost::ChooseRepairFrames(numChannels));
        velmohost::RepairSoundFile(scan, object, repairedPath, kNoProgress, {});
    } catch (const std::runtime_error&) {
        Require(numChannels > 250 || !std::isfinite(static_cast<float>(mode.replaceBy)), "a damaged file is repaired");
        return;
    }
    CheckRepairedFile(scan, damaged, repairedPath);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    TheHost();
    FuzzedDataProvider input(data, size);
    velmohost::RepairMode mode;
    if (input.ConsumeBool()) mode.mode = "givenvalue";
    const auto replaceBy = std::bit_cast<double>(input.ConsumeIntegral<std::uint64_t>());
    if (std::isfinite(replaceBy)) mode.replaceBy = replaceBy;
    const std::string path = Workplace() / (input.ConsumeBool() ? "damaged.wav" : "damaged.aiff");
    const auto bytes = input.ConsumeRemainingBytes<std::uint8_t>();
    WriteFile(path, bytes);
    try {
        const velmohost::FileScan scan = velmohost::ScanSoundFile(path, kNoProgress);
        Require(scan.IsClean() == (!scan.holdsFloats || BytesOfBadSamples(path, bytes).empty()),
                "bad samples are found");
        if (!scan.IsClean()) Repair(scan, mode, bytes);
    } catch (const velmohost::SoundError&) {
        // no sound file, or one of an unknown encoding
    }
    return 0;
}
