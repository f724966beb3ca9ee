#include "host/graph/TaskPool.h"

#include <algorithm>

namespace ombrelune {

/// Tasks of one call of RunAll that other threads have begun and not finished.
struct TaskPool::Batch {
    std::mutex lock;
    std::condition_variable done;
    int begun = 0;
};

TaskPool::TaskPool(int helpers)
{
    for (int i = 0; i < helpers; ++i) threads_.emplace_back([this] { Help(); });
}

TaskPool::~TaskPool()
{
    {
        std::lock_guard guard(lock_);
        ending_ = true;
    }
    more_.notify_all();
    for (std::thread& thread : threads_) thread.join();
}

void TaskPool::Help()
{
    for (;;) {
        Task task;
        {
            std::unique_lock guard(lock_);
            more_.wait(guard, [this] { return ending_ || !waiting_.empty(); });
            if (waiting_.empty()) return;
            task = std::move(waiting_.front());
            waiting_.pop_front();
            std::lock_guard begin(task.batch->lock);
            ++task.batch->begun;
        }
        (*task.work)();
        std::lock_guard end(task.batch->lock);
        --task.batch->begun;
        task.batch->done.notify_all();
    }
}

void TaskPool::RunAll(std::span<std::function<void()>> tasks)
{
    if (threads_.empty() || tasks.size() < 2) {
        for (auto& task : tasks) task();
        return;
    }
    auto const batch = std::make_shared<Batch>();
    {
        std::lock_guard guard(lock_);
        for (auto& task : tasks.subspan(1)) waiting_.push_back({batch, &task});
    }
    more_.notify_all();
    tasks[0]();
    // What nobody has begun yet is done here, last first, as the helpers take the first.
    for (;;) {
        std::function<void()>* work = nullptr;
        {
            std::lock_guard guard(lock_);
            auto const mine = std::find_if(waiting_.rbegin(), waiting_.rend(),
                                           [&](Task const& task) { return task.batch == batch; });
            if (mine == waiting_.rend()) break;
            work = mine->work;
            waiting_.erase(std::next(mine).base());
        }
        (*work)();
    }
    std::unique_lock guard(batch->lock);
    batch->done.wait(guard, [&] { return batch->begun == 0; });
}

} // namespace ombrelune
