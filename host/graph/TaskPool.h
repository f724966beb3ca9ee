#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <thread>
#include <vector>

namespace ombrelune {

/// Threads that work on branches of a flow side by side. Loops inside a tool are ParallelFor's.
class TaskPool {
public:
    /// @param helpers  threads beside the calling ones; 0 makes RunAll a plain loop
    explicit TaskPool(int helpers);
    ~TaskPool();

    /// Runs all tasks and returns when they are done; the calling thread takes part. A task may call RunAll.
    /// A caller waits for nothing but its own tasks that another thread has begun, so there is no deadlock as
    /// long as tasks wait only for what they depend on.
    void RunAll(std::span<std::function<void()>> tasks);

private:
    struct Batch;
    struct Task {
        std::shared_ptr<Batch> batch;
        std::function<void()>* work;
    };
    void Help();

    std::mutex lock_;
    std::condition_variable more_;
    std::deque<Task> waiting_;
    bool ending_ = false;
    std::vector<std::thread> threads_;
};

} // namespace ombrelune
