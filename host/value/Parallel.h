#pragma once

#include <functional>
#include <stop_token>

namespace ombrelune {

/// Runs body(0) .. body(count - 1) on the worker threads and returns when all are done. Neighbouring numbers
/// tend to run on one thread. What the body throws ends the loop and reaches the caller, and so does Stopped
/// once the caller's work is called off. While it waits, the calling thread takes over no work but this
/// loop's, so that it may hold a lock which other loops take.
void ParallelFor(int count, std::function<void(int)> const& body);

/// Thrown through work that was called off. No std::exception, so that nobody takes it for a failure.
struct Stopped {};

/// Lets loops of this thread, and what they run on others, end as soon as a stop is requested.
class StopScope {
public:
    explicit StopScope(std::stop_token const& stop);
    ~StopScope();
    StopScope(StopScope const&) = delete;
    StopScope& operator=(StopScope const&) = delete;

private:
    std::stop_token const* before_;
};
/// For long work between loops: throws Stopped when the work of this thread was called off.
void ThrowIfStopped();

/// Number of worker threads, this thread included; 0 or less means one per core. Takes effect for later calls
/// of ParallelFor and must not be called while one runs.
void SetThreadCount(int count);
int ThreadCount();

} // namespace ombrelune
