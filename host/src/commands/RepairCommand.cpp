#include "commands/RepairCommand.h"

#include <filesystem>
#include <memory>
#include <mutex>
#include <set>

#include "batch/FileRepair.h"
#include "commands/BatchRun.h"
#include "commands/RepairOutputs.h"
#include "sound/SoundError.h"

namespace velmohost {
namespace {

namespace fs = std::filesystem;
using Status = FileOutcome::Status;

/// Scans a file, and repairs it when it is damaged. Its jobs run on several threads.
class Repair {
public:
    Repair(const RepairOptions& repairOptions, BatchRun& batchRun)
        : options(repairOptions), run(batchRun), outputs(ChooseOutputs(options, run.Files())), host(options.paths) {
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

private:
    /// An output is free for one file of the batch, unless it exists and must stay.
    void ClaimOutput(const FileOutcome& outcome) {
        std::error_code error;
        if (!options.overwrite && fs::exists(fs::symlink_status(outcome.output, error))) {
            throw SoundError("cannot repair " + outcome.path + ": " + outcome.output +
                             " exists already (replace it with --overwrite)");
        }
        const std::lock_guard lock(mutex);
        if (!claimed.insert(fs::weakly_canonical(outcome.output)).second) {
            throw SoundError("cannot repair " + outcome.path + ": " + outcome.output + " belongs to another file");
        }
    }

    void Stream(std::size_t file, FileOutcome& outcome) {
        try {
            const std::unique_ptr<RepairObject, ObjectDeleter> object = CreateObject(outcome.scan);
            outcome.replacedOlderFile =
                RepairSoundFile(outcome.scan, *object, outcome.output,
                                [this, file](double fraction) { run.SetProgress(file, 0.5 + fraction / 2.0); }, {});
        } catch (const std::exception& cause) {
            throw SoundError("cannot repair " + outcome.path + ": " + cause.what());
        }
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
    std::mutex mutex;  // guards `claimed`
    std::set<fs::path> claimed;
};

}  // namespace

int RepairFiles(const RepairOptions& options) {
    BatchRun run(options);
    Repair repair(options, run);
    run.Do([&repair](std::size_t file, FileOutcome& outcome) { repair.Do(file, outcome); }, FormatRepairOutcome);
    run.Finish();
    return run.AnyHas(Status::Failed) ? 1 : 0;
}

}  // namespace velmohost
