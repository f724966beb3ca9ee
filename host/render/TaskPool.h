#pragma once

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <span>

namespace ombrelune {

/// The threads of the process that work on branches of flows side by side, whatever renderer they belong to;
/// as many as ThreadCount() and begun when there is work. Loops inside a tool are ParallelFor's.
class TaskPool {
public:
    static TaskPool& Shared();

    /// Runs all tasks and returns when they are done; the calling thread takes part. A task may call RunAll.
    /// A caller waits for nothing but its own tasks that another thread has begun, so there is no deadlock as
    /// long as tasks wait only for what they depend on. What a task throws reaches the caller at the end.
    void RunAll(std::span<std::function<void()>> tasks);

private:
    /// One call of RunAll, on its stack; all of it is under the pool's lock.
    struct Batch {
        int begun = 0; ///< tasks that helpers have begun and not finished
        std::exception_ptr failure = {};
        std::condition_variable done = {};
    };
    struct Task {
        Batch* batch;
        std::function<void()>* work;
    };
    TaskPool() = default;
    void Help();

    std::mutex lock_;
    std::condition_variable more_;
    std::deque<Task> waiting_;
    int threads_ = 0, working_ = 0; // helpers there are, and those with a task
    int limit_ = 0;                 // on those with a task
};

} // namespace ombrelune
