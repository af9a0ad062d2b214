#pragma once

#include <functional>
#include <string>
#include <vector>

#include "batch/BatchProgress.h"
#include "batch/FileOutcome.h"
#include "batch/WorkerPool.h"
#include "commands/BatchOptions.h"

namespace velmohost {

/// What the commands over many files share: every file is worked on by one of several threads, failures stay with
/// their files, progress is shown, and the outcomes are printed in the order of the files.
class BatchRun {
public:
    /// Does one file and fills in all of the outcome but its path. On a thread of the pool; an exception makes the file
    /// a failed one.
    using Job = std::function<void(std::size_t file, FileOutcome& outcome)>;
    /// The text to print for a file that did not fail.
    using Format = std::function<std::string(const FileOutcome&)>;

    /// @throws UsageError when no file is meant
    explicit BatchRun(const BatchOptions& options);

    const std::vector<ListedFile>& Files() const { return files; }
    WorkerPool& Pool() { return pool; }

    /// Has `fraction` of a file, 0 to 1, shown as through. Any thread.
    /// @throws an exception of its own when the batch is being given up, to end the job
    void SetProgress(std::size_t file, double fraction);

    /// Does all files and prints what became of them. Main thread; blocks.
    /// @throws std::runtime_error when the user interrupts it
    void Do(const Job& job, const Format& format);

    /// Writes the JSON file, when one is asked for, and sums up several files.
    /// @throws SoundError
    void Finish();

    const std::vector<FileOutcome>& Outcomes() const { return outcomes; }
    bool AnyHas(FileOutcome::Status status) const;

private:
    void DoFile(std::size_t file, const Job& job);
    unsigned NumThreads() const;

    const BatchOptions& options;
    const std::vector<ListedFile> files;
    std::vector<FileOutcome> outcomes;  // one per file, written by its job
    BatchProgress progress;
    WorkerPool pool;
};

}  // namespace velmohost
