#include "commands/BatchRun.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <thread>

#include "commands/Interruption.h"
#include "commands/Notice.h"
#include "commands/Progress.h"
#include "commands/UsageError.h"
#include "core/PathText.h"
#include "sound/SoundError.h"
#include "sound/TextFile.h"

namespace velmohost {
namespace {

/// Ends a job of a batch that is being given up; no failure of its file.
struct GivenUp {};

/// Prints what became of the files in their order, each as soon as those before it are through. Main thread.
class OutcomePrinter {
public:
    OutcomePrinter(const std::vector<FileOutcome>& fileOutcomes, const BatchRun::Format& formatOutcome)
        : outcomes(fileOutcomes), format(formatOutcome), isThrough(fileOutcomes.size()) {}

    void NoteThrough(std::size_t file, Progress& progress) {
        isThrough[file] = true;
        for (; next < outcomes.size() && isThrough[next]; ++next) {
            progress.Hide();
            Print(outcomes[next]);
        }
    }

private:
    void Print(const FileOutcome& outcome) const {
        if (outcome.status == FileOutcome::Status::Failed) return PrintNotice(outcome.error);
        std::fputs(format(outcome).c_str(), stdout);
        std::fflush(stdout);
    }

    const std::vector<FileOutcome>& outcomes;
    const BatchRun::Format& format;
    std::vector<bool> isThrough;
    std::size_t next = 0;
};

}  // namespace

BatchRun::BatchRun(const BatchOptions& batchOptions)
    : options(batchOptions),
      files(ListSoundFiles(options.files, options.recursive)),
      outcomes(files.size()),
      progress(files) {
    if (files.empty()) throw UsageError("there is no sound file in these folders (.wav, .bwf, .aif, .aiff, .caf)");
}

void BatchRun::SetProgress(std::size_t file, double fraction) {
    if (pool.IsGivenUp()) throw GivenUp();
    progress.Set(file, fraction);
}

unsigned BatchRun::NumThreads() const {
    const unsigned wanted = options.jobs > 0 ? options.jobs : std::max(1u, std::thread::hardware_concurrency());
    return static_cast<unsigned>(std::min<std::size_t>(wanted, files.size()));
}

void BatchRun::DoFile(std::size_t file, const Job& job) {
    FileOutcome& outcome = outcomes[file];
    outcome.path = files[file].path;
    try {
        if (std::error_code error; std::filesystem::is_directory(SystemPath(outcome.path), error)) {
            throw CannotRead(outcome.path, "it is a folder; --recursive walks it");
        }
        job(file, outcome);
    } catch (const SoundError& cause) {
        outcome.status = FileOutcome::Status::Failed;
        outcome.error = cause.what();
    } catch (const std::exception& cause) {
        outcome.status = FileOutcome::Status::Failed;
        outcome.error = outcome.path + ": " + cause.what();
    }
    progress.Set(file, 1.0);
}

void BatchRun::Do(const Job& job, const Format& format) {
    Progress display(options.quiet);
    const Interruption interruption;
    OutcomePrinter printer(outcomes, format);
    pool.Run(files.size(), NumThreads(),
             {[&](std::size_t file) {
                  DoFile(file, job);
                  pool.OnMainThread([&] { printer.NoteThrough(file, display); });
              },
              [&] {
                  if (interruption.Requested()) throw std::runtime_error("interrupted");
                  display.ShowText(progress.Text());
              }});
}

void BatchRun::Finish() {
    if (files.size() > 1) std::fputs(FormatSum(outcomes).c_str(), stdout);
    if (options.json) WriteTextFile(*options.json, FormatOutcomesAsJson(outcomes));
}

bool BatchRun::AnyHas(FileOutcome::Status status) const {
    return std::any_of(outcomes.begin(), outcomes.end(),
                       [status](const FileOutcome& outcome) { return outcome.status == status; });
}

}  // namespace velmohost
