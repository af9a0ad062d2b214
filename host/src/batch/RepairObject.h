#pragma once

#include <memory>
#include <string>
#include <vector>

#include "audio/DspChain.h"
#include "box/Box.h"
#include "box/Host.h"

namespace velmohost {

/// How bad samples are to be replaced.
struct RepairMode {
    std::string mode = "lastvalue";  ///< or "givenvalue"
    double replaceBy = 0.0;          ///< finite; in mode "givenvalue"
};

/// The host of a repair. What its objects post ("NaN occured in Channel #1") is not shown: the scan has counted every
/// bad sample already. One at a time; main thread.
class RepairHost {
public:
    /// @param pluginFolders searched before the externals of the package that lies beside the program
    explicit RepairHost(const std::vector<std::string>& pluginFolders);
    ~RepairHost();
    RepairHost(const RepairHost&) = delete;
    RepairHost& operator=(const RepairHost&) = delete;

    /// A tesk.fixnan~ with as many channels.
    /// @throws std::runtime_error with the host's reason when there is no such object, or it has no room for so many
    std::unique_ptr<Box> CreateBox(const RepairMode& mode, unsigned numChannels);

private:
    Host host;
    std::string lastRow;  // of the Max window
};

/// A tesk.fixnan~ with audio on, one channel for each channel of a sound file. Made and destroyed on the main thread;
/// in between `Process` may run on any one thread.
class RepairObject {
public:
    static constexpr unsigned long kVectorSize = 512;  // long vectors cost the object less for each sample

    /// @param maxFrames the most frames of one `Process` call, a multiple of the vector size
    /// @throws std::runtime_error as `RepairHost::CreateBox`
    RepairObject(RepairHost& host, const RepairMode& mode, unsigned numChannels, double samplerate,
                 unsigned long maxFrames);

    /// Where to put the next samples of a channel before `Process`.
    double* Input(unsigned channel) noexcept { return chain.InletSamples(channel); }
    /// What came out in their places.
    const double* Output(unsigned channel) const noexcept { return chain.OutletSamples(channel); }

    /// Runs the object over the samples put in, in whole vectors: what follows them in the last one counts as signal.
    void Process(unsigned long numFrames) noexcept;

private:
    std::unique_ptr<Box> box;
    DspChain chain;
};

}  // namespace velmohost
