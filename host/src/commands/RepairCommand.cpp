#include "commands/RepairCommand.h"

#include <algorithm>
#include <filesystem>
#include <locale>
#include <memory>
#include <mutex>
#include <set>
#include <sstream>

#include "batch/FileRepair.h"
#include "commands/BatchRun.h"
#include "commands/RepairOutputs.h"
#include "core/PathText.h"
#include "report/ReportPage.h"
#include "sound/SoundError.h"
#include "sound/TextFile.h"
#include "utils/VelmoDspDate.h"

namespace velmohost {
namespace {

namespace fs = std::filesystem;
using Status = FileOutcome::Status;

constexpr std::size_t kMaxPictures = 1000;  // more would make a page that browsers scroll badly

/// Scans a file, and repairs it when it is damaged. Its jobs run on several threads.
class Repair {
public:
    Repair(const RepairOptions& repairOptions, BatchRun& batchRun)
        : options(repairOptions),
          run(batchRun),
          outputs(ChooseOutputs(options, run.Files())),
          host(options.paths),
          pictures(run.Files().size()) {
        host.CreateBox(options.mode, 1);  // when there is no object, no file need be tried
    }

    void Do(std::size_t file, FileOutcome& outcome) {
        // A damaged file is read twice: to find what is bad, and to repair it.
        outcome.scan =
            ScanSoundFile(outcome.path, [this, file](double fraction) { run.SetProgress(file, fraction / 2.0); });
        outcome.status = Status::Clean;
        if (outcome.scan.IsClean()) return;
        outcome.output = outputs[file];
        ClaimOutput(outcome);
        Stream(file, outcome);
        outcome.status = Status::Repaired;
    }

    /// What the report draws of each file; empty without one.
    const std::vector<std::vector<ChannelPicture>>& Pictures() const { return pictures; }

private:
    /// An output is free for one file of the batch, unless it exists and must stay.
    void ClaimOutput(const FileOutcome& outcome) {
        std::error_code error;
        if (!options.overwrite && fs::exists(fs::symlink_status(SystemPath(outcome.output), error))) {
            throw SoundError("cannot repair " + outcome.path + ": " + outcome.output +
                             " exists already (replace it with --overwrite)");
        }
        const std::lock_guard lock(mutex);
        if (!claimed.insert(fs::weakly_canonical(SystemPath(outcome.output))).second) {
            throw SoundError("cannot repair " + outcome.path + ": " + outcome.output + " belongs to another file");
        }
    }

    void Stream(std::size_t file, FileOutcome& outcome) {
        try {
            const std::unique_ptr<RepairObject, ObjectDeleter> object = CreateObject(outcome.scan);
            if (options.report) pictures[file] = StartPictures(outcome.scan, ClaimPictures(outcome.scan));
            outcome.replacedOlderFile = RepairSoundFile(
                outcome.scan, *object, outcome.output,
                [this, file](double fraction) { run.SetProgress(file, 0.5 + fraction / 2.0); },
                [this, file](unsigned channel, const float* before, const float* after, unsigned long n) {
                    for (ChannelPicture& picture : pictures[file]) {
                        if (picture.Channel() == channel) picture.Add(before, after, n);
                    }
                });
        } catch (const std::exception& cause) {
            pictures[file].clear();
            throw SoundError("cannot repair " + outcome.path + ": " + cause.what());
        }
    }

    /// How many pictures the file may have, of those that a page still takes.
    std::size_t ClaimPictures(const FileScan& scan) {
        const auto numDamaged =
            static_cast<std::size_t>(std::count_if(scan.channels.begin(), scan.channels.end(),
                                                   [](const BadSamples& channel) { return channel.NumBad() > 0; }));
        const std::lock_guard lock(mutex);
        const std::size_t number = std::min(numPicturesLeft, numDamaged);
        numPicturesLeft -= number;
        return number;
    }

    /// Objects come and go on the main thread.
    struct ObjectDeleter {
        WorkerPool* pool;
        void operator()(RepairObject* object) const {
            pool->OnMainThread([object] { delete object; });
        }
    };

    std::unique_ptr<RepairObject, ObjectDeleter> CreateObject(const FileScan& scan) {
        std::unique_ptr<RepairObject> object;
        const auto numChannels = static_cast<unsigned>(scan.channels.size());
        run.Pool().OnMainThread([&] {
            object = std::make_unique<RepairObject>(host, options.mode, numChannels, scan.samplerate,
                                                    ChooseRepairFrames(numChannels));
        });
        return {object.release(), ObjectDeleter{&run.Pool()}};
    }

    const RepairOptions& options;
    BatchRun& run;
    const std::vector<std::string> outputs;
    RepairHost host;
    std::vector<std::vector<ChannelPicture>> pictures;  // for each file, made by its job
    std::mutex mutex;                                   // guards what follows
    std::set<fs::path> claimed;
    std::size_t numPicturesLeft = kMaxPictures;
};

/// "0.25", as people write it.
std::string FormatValue(double value) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.exceptions(std::ios::badbit);
    text << value;
    return text.str();
}

std::string DescribeReplacement(const RepairMode& mode) {
    return mode.mode == "givenvalue" ? FormatValue(mode.replaceBy) : "the channel's last good sample";
}

}  // namespace

int RepairFiles(const RepairOptions& options) {
    BatchRun run(options);
    Repair repair(options, run);
    run.Do([&repair](std::size_t file, FileOutcome& outcome) { repair.Do(file, outcome); }, FormatRepairOutcome);
    run.Finish();
    if (options.report) {
        const ReportHeading heading{velmodsp::Date::ToLocalText().Str(), DescribeReplacement(options.mode)};
        WriteTextFile(*options.report, FormatReport(heading, run.Outcomes(), repair.Pictures()));
    }
    return run.AnyHas(Status::Failed) ? 1 : 0;
}

}  // namespace velmohost
