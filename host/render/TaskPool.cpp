#include "host/render/TaskPool.h"

#include <algorithm>
#include <system_error>
#include <thread>

#include "host/value/Parallel.h"

namespace ombrelune {

TaskPool& TaskPool::Shared()
{
    // Never destroyed: helpers sleep in it until the process ends.
    static auto& pool = *new TaskPool;
    return pool;
}

void TaskPool::Help()
{
    std::unique_lock guard(lock_);
    for (;;) {
        more_.wait(guard, [this] { return !waiting_.empty() && working_ < limit_; });
        Task const task = waiting_.front();
        waiting_.pop_front();
        ++task.batch->begun;
        ++working_;
        guard.unlock();
        std::exception_ptr failure;
        try {
            (*task.work)();
        } catch (...) {
            failure = std::current_exception();
        }
        guard.lock();
        --working_;
        if (failure) task.batch->failure = failure;
        // After the unlock of the last one the batch may be gone.
        if (--task.batch->begun == 0) task.batch->done.notify_all();
    }
}

void TaskPool::RunAll(std::span<std::function<void()>> tasks)
{
    int const helpers = ThreadCount() - 1;
    if (helpers == 0 || tasks.size() < 2) {
        for (auto& task : tasks) task();
        return;
    }
    Batch batch;
    {
        std::lock_guard guard(lock_);
        limit_ = helpers;
        try {
            for (; threads_ < helpers; ++threads_) std::thread([this] { Help(); }).detach();
        } catch (std::system_error const&) {
            // The system gives no more; those there are and the caller do it all.
        }
        for (auto& task : tasks.subspan(1)) waiting_.push_back({&batch, &task});
    }
    more_.notify_all();
    auto const run = [&](std::function<void()>& task) {
        try {
            task();
        } catch (...) {
            std::lock_guard guard(lock_);
            batch.failure = std::current_exception();
        }
    };
    run(tasks[0]);
    // What nobody has begun yet is done here, last first, as the helpers take the first.
    std::unique_lock guard(lock_);
    for (;;) {
        auto const mine = std::find_if(waiting_.rbegin(), waiting_.rend(),
                                       [&](Task const& task) { return task.batch == &batch; });
        if (mine == waiting_.rend()) break;
        std::function<void()>* const work = mine->work;
        waiting_.erase(std::next(mine).base());
        guard.unlock();
        run(*work);
        guard.lock();
    }
    batch.done.wait(guard, [&] { return batch.begun == 0; });
    if (batch.failure) std::rethrow_exception(batch.failure);
}

} // namespace ombrelune
