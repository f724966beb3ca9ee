#include "host/value/Parallel.h"

#include <memory>
#include <utility>

#include <tbb/blocked_range.h>
#include <tbb/global_control.h>
#include <tbb/parallel_for.h>
#include <tbb/task_arena.h>

namespace ombrelune {

namespace {

std::unique_ptr<tbb::task_arena>& Arena()
{
    static auto arena = std::make_unique<tbb::task_arena>();
    return arena;
}

thread_local std::stop_token const* currentStop = nullptr; // of the innermost StopScope

void RunRange(int from, int to, std::function<void(int)> const& body)
{
    for (int i = from; i < to; ++i) {
        ThrowIfStopped();
        body(i);
    }
}

} // namespace

StopScope::StopScope(std::stop_token const& stop) : before_(std::exchange(currentStop, &stop)) {}
StopScope::~StopScope() { currentStop = before_; }

void ThrowIfStopped()
{
    if (currentStop && currentStop->stop_requested()) throw Stopped{};
}

void ParallelFor(int count, std::function<void(int)> const& body)
{
    if (count == 1 || ThreadCount() == 1) return RunRange(0, count, body);
    static std::stop_token const never;
    std::stop_token const& stop = currentStop ? *currentStop : never;
    // The automatic partitioner splits a range only as far as idle threads ask for it, so tasks stay large.
    Arena()->execute([&] {
        tbb::this_task_arena::isolate([&] {
            tbb::parallel_for(tbb::blocked_range<int>(0, count), [&](tbb::blocked_range<int> const& range) {
                StopScope const scope(stop);
                RunRange(range.begin(), range.end(), body);
            });
        });
    });
}

void SetThreadCount(int count)
{
    // An arena wider than the machine gets its workers only when the process-wide limit allows them.
    static std::unique_ptr<tbb::global_control> limit;
    limit.reset();
    if (count > 0)
        limit = std::make_unique<tbb::global_control>(tbb::global_control::max_allowed_parallelism,
                                                      static_cast<std::size_t>(count));
    Arena() = std::make_unique<tbb::task_arena>(count > 0 ? count : +tbb::task_arena::automatic);
}

int ThreadCount() { return Arena()->max_concurrency(); }

} // namespace ombrelune
