#pragma once

#include <functional>

namespace ombrelune {

/// Runs body(0) .. body(count - 1) on the worker threads and returns when all are done. Neighbouring numbers
/// tend to run on one thread. The body must not throw.
void ParallelFor(int count, std::function<void(int)> const& body);

/// Number of worker threads, this thread included; 0 or less means one per core. Takes effect for later calls
/// of ParallelFor and must not be called while one runs.
void SetThreadCount(int count);
int ThreadCount();

} // namespace ombrelune
