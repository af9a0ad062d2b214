#include "batch/WorkerPool.h"

#include <chrono>
#include <thread>
#include <utility>
#include <vector>

namespace velmohost {
namespace {

constexpr std::chrono::milliseconds kWaitingInterval{100};

}  // namespace

void WorkerPool::Run(std::size_t numJobs, unsigned numThreads, const Work& work) {
    nextJob = 0;
    firstError = nullptr;
    numWorkersAtWork = numThreads;
    {
        std::vector<std::jthread> threads;
        for (unsigned i = 0; i < numThreads; ++i) threads.emplace_back([&] { DoJobs(numJobs, work); });
        ServeTasks(work);
    }
    if (firstError) std::rethrow_exception(std::exchange(firstError, nullptr));
}

void WorkerPool::DoJobs(std::size_t numJobs, const Work& work) {
    std::unique_lock lock(mutex);
    while (nextJob < numJobs && !firstError) {
        const std::size_t job = nextJob++;
        lock.unlock();
        try {
            work.job(job);
        } catch (...) {
            GiveUp(std::current_exception());
        }
        lock.lock();
    }
    --numWorkersAtWork;
    mainHasWork.notify_one();
}

void WorkerPool::ServeTasks(const Work& work) {
    std::unique_lock lock(mutex);
    while (numWorkersAtWork > 0) {
        mainHasWork.wait_for(lock, kWaitingInterval, [this] { return !tasks.empty() || numWorkersAtWork == 0; });
        while (!tasks.empty()) {
            Task& task = *tasks.front();
            tasks.pop_front();
            lock.unlock();
            try {
                (*task.function)();
            } catch (...) {
                task.error = std::current_exception();
            }
            lock.lock();
            task.isDone = true;
            taskIsDone.notify_all();
        }
        lock.unlock();
        try {
            work.whileWaiting();
        } catch (...) {
            GiveUp(std::current_exception());
        }
        lock.lock();
    }
}

void WorkerPool::OnMainThread(const std::function<void()>& function) {
    Task task{&function, nullptr, false};
    std::unique_lock lock(mutex);
    tasks.push_back(&task);
    mainHasWork.notify_one();
    taskIsDone.wait(lock, [&task] { return task.isDone; });
    if (task.error) std::rethrow_exception(task.error);
}

void WorkerPool::GiveUp(std::exception_ptr error) {
    const std::lock_guard lock(mutex);
    if (!firstError) firstError = std::move(error);
}

bool WorkerPool::IsGivenUp() {
    const std::lock_guard lock(mutex);
    return firstError != nullptr;
}

}  // namespace velmohost
