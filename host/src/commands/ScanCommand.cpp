#include "commands/ScanCommand.h"

#include "commands/BatchRun.h"

namespace velmohost {

using Status = FileOutcome::Status;

int ScanFiles(const BatchOptions& options) {
    BatchRun run(options);
    run.Do(
        [&run](std::size_t file, FileOutcome& outcome) {
            outcome.scan =
                ScanSoundFile(outcome.path, [&run, file](double fraction) { run.SetProgress(file, fraction); });
            outcome.status = outcome.scan.IsClean() ? Status::Clean : Status::Damaged;
        },
        FormatScanOutcome);
    run.Finish();
    if (run.AnyHas(Status::Failed)) return 1;
    return run.AnyHas(Status::Damaged) ? kBadSamplesFound : 0;
}

}  // namespace velmohost
