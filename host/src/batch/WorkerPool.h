#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>

namespace velmohost {

/// Does many jobs on several threads, while the main thread does what only it may do: create and free objects, print.
///
///     WorkerPool pool;
///     pool.Run(files.size(), 4, {[&](std::size_t i) {
///                                    scans[i] = Scan(files[i]);                       // a worker's thread
///                                    pool.OnMainThread([&] { Print(scans[i]); });
///                                }, showProgress});
class WorkerPool {
public:
    struct Work {
        std::function<void(std::size_t)> job;  ///< called once for each job's number, on a thread of the pool
        std::function<void()> whileWaiting;    ///< called on the main thread several times a second
    };

    /// Does the jobs 0 to `numJobs` - 1, each as soon as a thread is free, in that order, and returns when all are
    /// done. When a job or `whileWaiting` throws, no further job is begun, and the exception comes out when those at
    /// work have ended. Main thread; blocks.
    void Run(std::size_t numJobs, unsigned numThreads, const Work& work);

    /// Has the main thread call `task` and returns when that is done; what it throws comes out here. From within a job.
    void OnMainThread(const std::function<void()>& task);

    /// Whether something has thrown, so that jobs at work may as well end. Any thread.
    bool IsGivenUp();

private:
    struct Task {
        const std::function<void()>* function;
        std::exception_ptr error;
        bool isDone = false;
    };

    void DoJobs(std::size_t numJobs, const Work& work);
    void ServeTasks(const Work& work);
    void GiveUp(std::exception_ptr error);

    std::mutex mutex;  // guards all below
    std::condition_variable mainHasWork, taskIsDone;
    std::deque<Task*> tasks;
    std::size_t nextJob = 0;
    unsigned numWorkersAtWork = 0;
    std::exception_ptr firstError;
};

}  // namespace velmohost
